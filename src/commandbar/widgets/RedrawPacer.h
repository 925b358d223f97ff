#pragma once
// Paces the redraws of the window's bars. Every redraw of any part of the
// window composes the whole window again, which costs a frame of the engine's
// drawing; pages that load change captions, pictures, the progress and the
// status text dozens of times a second. A widget that changes after a quiet
// spell redraws at once; later changes within the next tenth of a second are
// held and drawn together. Only painting waits: the widgets' state changes at
// once, and the page's own frames are never held.
#include <QList>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace commandbar {

class RedrawPacer : public QObject
{
public:
    RedrawPacer();
    // Call before the program changes what widget shows.
    void changing(QWidget& widget);

private:
    void release();

    QTimer calm_;
    QList<QPointer<QWidget>> held_;
};

} // namespace commandbar
