#include "SessionState.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {
constexpr QLatin1String formatKey{"qub-browser-session"};
} // namespace

QList<SessionTab> SessionState::pages() const
{
    QList<SessionTab> result;
    for (const SessionTab& tab : tabs)
        if (!tab.address.isEmpty())
            result << tab;
    return result;
}

QByteArray sessionText(const SessionState& state)
{
    QJsonArray tabs;
    for (const SessionTab& tab : state.tabs)
        tabs.append(
            QJsonObject{{QStringLiteral("address"), tab.address.left(SessionState::maxAddress)},
                        {QStringLiteral("title"), tab.title.left(SessionState::maxTitle)}});
    const QJsonObject root{{formatKey, 1},
                           {QStringLiteral("current"), state.current},
                           {QStringLiteral("cleanExit"), state.cleanExit},
                           {QStringLiteral("tabs"), tabs}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

std::optional<SessionState> readSession(const QByteArray& text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    const QJsonObject root = document.object();
    if (root.value(formatKey).toInt() != 1 || !root.value(QStringLiteral("tabs")).isArray())
        return std::nullopt;
    SessionState state;
    state.cleanExit = root.value(QStringLiteral("cleanExit")).toBool();
    const QJsonArray tabs = root.value(QStringLiteral("tabs")).toArray();
    for (const auto& entry : tabs) {
        if (state.tabs.size() == SessionState::maxTabs)
            break;
        const QJsonObject tab = entry.toObject();
        QString address = tab.value(QStringLiteral("address")).toString();
        // Kept in its place, so the shown tab's index still holds, but never
        // opened again.
        if (address.size() > SessionState::maxAddress)
            address.clear();
        state.tabs.append(
            {address, tab.value(QStringLiteral("title")).toString().left(SessionState::maxTitle)});
    }
    const int current = root.value(QStringLiteral("current")).toInt(-1);
    state.current = current >= 0 && current < state.tabs.size() ? current : -1;
    return state;
}
