#pragma once
// Keeps a page from trapping the user in its script dialogs: once a page has
// brought up dialog after dialog, each within a second of the last one being
// answered, it gets no more until it loads again. An alert in a loop is then
// answered three times, not for ever.
#include <QtGlobal>

namespace platform {

class ScriptDialogLimit
{
public:
    static constexpr int burst = 3;
    static constexpr qint64 quietMs = 1000;

    bool allows() const { return inRow_ < burst; }
    // A dialog shown and answered at these times, in milliseconds of any
    // steady clock.
    void answered(qint64 shown, qint64 answered)
    {
        inRow_ = lastAnswered_ >= 0 && shown - lastAnswered_ < quietMs ? inRow_ + 1 : 1;
        lastAnswered_ = answered;
    }
    // The page loaded anew.
    void reset() { *this = {}; }

private:
    // Dialogs in a row, each shown within quietMs of the last one's answer.
    int inRow_ = 0;
    qint64 lastAnswered_ = -1;
};

} // namespace platform
