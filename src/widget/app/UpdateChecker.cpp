#include "widget/app/UpdateChecker.h"

#include "widget/core/Pause.h"
#include "widget/core/whenDone.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"
#include "widget/sources/AppVersion.h"
#include <utility>

using namespace std::chrono_literals;

UpdateChecker::UpdateChecker(WidgetModel &model, const Clock &clock, Fetch fetch, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_clock(clock)
    , m_fetch(std::move(fetch))
{
}

QUrl UpdateChecker::page() const
{
    return AppVersion::pageURL(m_latestURL, m_model.langCode());
}

void UpdateChecker::restore(
    const std::optional<TimePoint> &checkedAt, const std::optional<QString> &latestVersion)
{
    m_updateCheckedAt = checkedAt;
    m_latestVersion = latestVersion;
    applyUpdateState();
}

void UpdateChecker::checkForUpdates(Occasion occasion)
{
    const TimePoint now = m_clock.now();
    const auto isRecent = [now](const std::optional<TimePoint> &moment, Seconds span) {
        return moment && !hasPassed(span, *moment, now);
    };
    if (!m_updateCheckOn || !AppVersion::current() || m_checkingUpdate
        || isRecent(m_updateTriedAt, 600s)
        || isRecent(m_updateCheckedAt, occasion == Occasion::EveryDay ? 86'400s : 600s)) {
        return;
    }
    m_checkingUpdate = true;
    m_updateTriedAt = now;
    whenDone<UpdateCheck::UpdateOutcome>(m_fetch(*AppVersion::current(), this),
        UpdateCheck::Unavailable(), this,
        [this](const UpdateCheck::UpdateOutcome &outcome) { finishUpdateCheck(outcome); });
}

void UpdateChecker::finishUpdateCheck(const UpdateCheck::UpdateOutcome &outcome)
{
    m_checkingUpdate = false;
    if (const auto *reply = std::get_if<UpdateReply>(&outcome)) {
        m_updateCheckedAt = m_clock.now();
        m_latestVersion = reply->version;
        m_latestURL = reply->url;
        applyUpdateState();
        Q_EMIT replied();
    } else if (std::holds_alternative<UpdateCheck::Malformed>(outcome)
        && !std::exchange(m_malformedLogged, true)) {
        WidgetLog::write(QStringLiteral("update check: malformed response"));
    }
}

void UpdateChecker::applyUpdateState()
{
    const std::optional<QString> &running = AppVersion::current();
    const bool newer =
        m_latestVersion && running && AppVersion::isNewer(*m_latestVersion, *running);
    m_model.setUpdate(newer ? m_latestVersion : std::nullopt);
}

#include "moc_UpdateChecker.cpp"
