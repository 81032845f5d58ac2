#pragma once

#include "widget/core/Clock.h"
#include "widget/sources/UpdateCheck.h"
#include <functional>
#include <QObject>
#include <QUrl>

class WidgetModel;

/// Decides when the product's server is asked for a newer version, and shows what it answers.
class UpdateChecker final : public QObject {
    Q_OBJECT

public:
    /// Asks once, telling this version; the answer ends with the owner.
    using Fetch =
        std::function<QFuture<UpdateCheck::UpdateOutcome>(const QString &current, QObject *owner)>;
    enum class Occasion { EveryDay, OnRequest };

    UpdateChecker(WidgetModel &model, const Clock &clock, Fetch fetch, QObject *parent = nullptr);

    [[nodiscard]] const std::optional<TimePoint> &updateCheckedAt() const
    {
        return m_updateCheckedAt;
    }
    [[nodiscard]] const std::optional<QString> &latestVersion() const { return m_latestVersion; }
    /// The page of the newest version in the interface's language.
    [[nodiscard]] QUrl page() const;

    void setUpdateCheckOn(bool on) { m_updateCheckOn = on; }
    /// Takes up what an earlier run has learnt.
    void restore(
        const std::optional<TimePoint> &checkedAt, const std::optional<QString> &latestVersion);
    /// Asks if checks are switched on and the last one is long enough ago: a day, or ten minutes on
    /// request. What failed is not tried again for ten minutes.
    void checkForUpdates(Occasion occasion);

Q_SIGNALS:
    /// There is something new to remember.
    void replied();

private:
    void finishUpdateCheck(const UpdateCheck::UpdateOutcome &outcome);
    void applyUpdateState();

    WidgetModel &m_model;
    const Clock &m_clock;
    Fetch m_fetch;
    bool m_updateCheckOn = true;
    bool m_checkingUpdate = false;
    std::optional<TimePoint> m_updateCheckedAt; ///< last successful check
    std::optional<TimePoint> m_updateTriedAt;   ///< last attempt
    std::optional<QString> m_latestVersion;
    std::optional<QString> m_latestURL;
    bool m_malformedLogged = false;
};
