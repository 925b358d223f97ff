#pragma once
// The progress display of the status band (pic_progress): the information
// label lbl_Inf beside a bar, pic_PBimg, filled to the active tab's percent.
// The bar is empty at 0 and while no page loads.
#include <QWidget>

class QLabel;

class ProgressDisplay : public QWidget
{
    Q_OBJECT
public:
    explicit ProgressDisplay(QWidget* parent = nullptr);

    void setPercent(int percent);
    int percent() const { return percent_; }
    QLabel* info() const { return info_; }

private:
    class Bar;
    QLabel* info_;
    Bar* bar_;
    int percent_ = 0;
};
