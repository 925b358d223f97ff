#pragma once
// The open pages as the session file keeps them: each tab's address and
// title in strip order, which tab was shown, and whether the program ended
// cleanly after writing it. The file is read back as untrusted text: a file
// that is not a session gives nothing, and entries beyond the limits are
// dropped.
#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

struct SessionTab
{
    QString address;
    QString title;
    bool operator==(const SessionTab&) const = default;
};

struct SessionState
{
    static constexpr int maxTabs = 1000;
    static constexpr int maxAddress = 8192;
    static constexpr int maxTitle = 500;

    QList<SessionTab> tabs;
    // Index into tabs; -1 when no tab was shown.
    int current = -1;
    bool cleanExit = false;
    bool operator==(const SessionState&) const = default;

    // The tabs a restore can open: those with an address.
    QList<SessionTab> pages() const;
};

QByteArray sessionText(const SessionState& state);
std::optional<SessionState> readSession(const QByteArray& text);
