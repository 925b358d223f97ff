#pragma once
// Tabs out of sight give back their pages' work: a tab not shown for a while
// is frozen, after longer it is discarded, and when the system runs low on
// memory every tab out of sight is. Each page goes only as far as it can
// without loss (see LifecycleFacet): a tab with sound, a download or an
// edited form keeps what it has. A tab shown again wakes by itself.
#include <QHash>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

class TabStrip;
struct TabChange;
namespace platform {
class BrowserView;
}

class TabRest : public QObject
{
public:
    struct Times
    {
        // How long a tab is out of sight before it is frozen, and before it
        // is discarded; zero for never.
        std::chrono::milliseconds freeze{0};
        std::chrono::milliseconds discard{0};
    };
    using MemoryLow = std::function<bool()>;
    // Milliseconds on a clock that never goes back.
    using Now = std::function<qint64()>;
    static qint64 steadyNow();

    TabRest(TabStrip& tabs, MemoryLow memoryLow, Now now = steadyNow);
    // Looks at the tabs from now on: when the next is due to rest, when one
    // refused to rest may have changed its mind, and every few seconds at
    // the system's memory while a tab out of sight could give some back.
    void start(Times times);
    // One look: rests each tab out of sight as far as its time, or low
    // memory, asks, and sets the time of the next.
    void sweep();
    // When the next look is due on the clock of Now, or -1 for none.
    qint64 nextLook() const { return nextLook_; }

private:
    void changed(const TabChange& change);
    void lookIn(qint64 ms);

    TabStrip& tabs_;
    MemoryLow memoryLow_;
    Now now_;
    Times times_;
    bool started_ = false;
    QTimer timer_;
    qint64 nextLook_ = -1;
    // Since when each tab out of sight has been so.
    QHash<const platform::BrowserView*, qint64> hiddenSince_;
};
