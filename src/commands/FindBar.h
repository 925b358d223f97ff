#pragma once
// The find bar under the page: finds as the user types, says how many matches
// the page has, steps to the next or previous one (Enter, Shift+Enter) and may
// match case. Esc or its close button hides it and clears the marks. A new
// page or another tab clears the marks and the count; the text stays.
#include <QWidget>

class ActiveTabSignals;
class QCheckBox;
class QLabel;
class QLineEdit;
class TabStrip;

class FindBar : public QWidget
{
    Q_OBJECT
public:
    FindBar(TabStrip& tabs, ActiveTabSignals& active, QWidget* parent = nullptr);

    // Shows the bar with its text selected, ready to type.
    void open();
    void close();
    QString matchesText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void find(bool backward);
    void clearMarks();

    TabStrip& tabs_;
    QLineEdit* text_;
    QCheckBox* matchCase_;
    QLabel* matches_;
    // Answers of an earlier search than the last are dropped.
    int searching_ = 0;
};
