#pragma once
// Time of day as the program measures it; tests set it by hand.
#include <QTime>

namespace platform {

class Clock
{
public:
    virtual ~Clock() = default;
    virtual double secondsSinceMidnight() const = 0;
};

class SystemClock : public Clock
{
public:
    double secondsSinceMidnight() const override
    {
        return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
    }
};

} // namespace platform
