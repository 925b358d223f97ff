#include "SessionSubsystem.h"

SessionSubsystem::SessionSubsystem(const QString& folder, TabStrip& tabs, EveryTabSignals& every,
                                   platform::BrowserViewFactory& views, RestorePage::Text text)
    : files_(folder), recorder_(folder, tabs, every),
      restorePage_(tabs, std::move(text), [this] { recorder_.resume(); }),
      restorePageAsked_(views, restorePage_)
{
}

void SessionSubsystem::start()
{
    RestorePage::Versions versions;
    for (int version = 0; version <= SessionFiles::backups; ++version)
        versions[size_t(version)] = files_.read(version);
    // The newest version that could be read says how the last run ended.
    const auto latest = std::find_if(versions.begin(), versions.end(),
                                     [](const auto& version) { return version.has_value(); });
    if (latest == versions.end() || (*latest)->cleanExit || (*latest)->pages().isEmpty()) {
        recorder_.resume();
        return;
    }
    recorder_.hold();
    restorePage_.offer(std::move(versions));
}
