#include "CompanionChannel.h"

void CompanionChannel::setText(const QString& text)
{
    if (text == text_)
        return;
    text_ = text;
    emit changed();
}
