#include "widget/app/StateFile.h"

#include "widget/core/dataFolder.h"
#include "widget/core/parseObject.h"
#include "widget/core/Paths.h"
#include "widget/core/readJSON.h"
#include "widget/core/replaceFile.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/OptionTable.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <QJsonDocument>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A moment as seconds since 1970; nothing for one that no calendar knows.
std::optional<TimePoint> moment(double seconds)
{
    constexpr double farthest = 1e15;
    // Rounded first: what is kept must still be near enough when it has been written and read
    // again.
    const double milliseconds = std::round(seconds * 1000);
    if (!(std::abs(milliseconds) < farthest)) {
        return std::nullopt;
    }
    return TimePoint(std::chrono::milliseconds(static_cast<qint64>(milliseconds)));
}

/// A choice and the text it is stored as.
template <typename Choice> struct Named {
    Choice choice;
    const char *text;
};

constexpr std::array views {
    Named<ViewMode> {ViewMode::Icon, "icon"}, Named<ViewMode> {ViewMode::Window, "window"}};
constexpr std::array tabs {Named<HistoryTab> {HistoryTab::Days, "days"},
    Named<HistoryTab> {HistoryTab::Weeks, "weeks"},
    Named<HistoryTab> {HistoryTab::Months, "months"},
    Named<HistoryTab> {HistoryTab::Sessions, "sessions"}};
constexpr std::array providers {
    Named<Provider> {Provider::Claude, "claude"}, Named<Provider> {Provider::Codex, "codex"}};

/// Reads the members of a file one by one; a wrong type leaves a value as it is.
class Reader final {
public:
    explicit Reader(QJsonObject file)
        : m_file(std::move(file))
    {
    }

    void flag(QLatin1String key, bool &value) const { value = at(key).toBool(value); }
    void text(QLatin1String key, QString &value) const { value = at(key).toString(value); }

    template <typename Choices, typename Choice>
    void choice(QLatin1String key, const Choices &choices, Choice &value) const
    {
        const QString text = at(key).toString();
        const auto found = std::ranges::find_if(
            choices, [&](const auto &named) { return text == QLatin1String(named.text); });
        value = found != choices.end() ? found->choice : value;
    }

    [[nodiscard]] std::optional<double> number(QLatin1String key) const
    {
        return at(key).isDouble() ? std::optional(at(key).toDouble()) : std::nullopt;
    }

    [[nodiscard]] QJsonValue at(QLatin1String key) const { return m_file.value(key); }

private:
    QJsonObject m_file;
};

PersistedState read(const Reader &file)
{
    PersistedState state;
    for (const OptionRow &row : optionTable()) {
        if (row.stored != nullptr) {
            file.flag(row.key, state.*row.stored);
        }
    }
    file.flag("hidden"_L1, state.hidden);
    file.flag("expanded"_L1, state.expanded);
    file.choice("view"_L1, views, state.view);
    file.choice("tab"_L1, tabs, state.tab);
    file.choice("provider"_L1, providers, state.provider);
    file.text("language"_L1, state.language);
    file.text("uiLanguage"_L1, state.uiLanguage);
    const auto left = file.number("left"_L1);
    const auto top = file.number("top"_L1);
    if (left && top) {
        state.windowSpot = WindowSpot {*left, *top};
    }
    if (const auto seconds = file.number("updateCheckedAt"_L1)) {
        state.updateCheckedAt = moment(*seconds);
    }
    if (file.at("latestVersion"_L1).isString()) {
        state.latestVersion = file.at("latestVersion"_L1).toString();
    }
    return state;
}

template <typename Choices, typename Choice> QString textOf(const Choices &choices, Choice choice)
{
    const auto found = std::ranges::find_if(
        choices, [choice](const auto &named) { return named.choice == choice; });
    return QLatin1String(found->text);
}

QJsonObject written(const PersistedState &state)
{
    QJsonObject file {
        {QStringLiteral("hidden"), state.hidden},
        {QStringLiteral("expanded"), state.expanded},
        {QStringLiteral("view"), textOf(views, state.view)},
        {QStringLiteral("tab"), textOf(tabs, state.tab)},
        {QStringLiteral("provider"), textOf(providers, state.provider)},
        {QStringLiteral("language"), state.language},
        {QStringLiteral("uiLanguage"), state.uiLanguage},
    };
    for (const OptionRow &row : optionTable()) {
        if (row.stored != nullptr) {
            file.insert(row.key, state.*row.stored);
        }
    }
    if (state.windowSpot) {
        file.insert(QStringLiteral("left"), state.windowSpot->left);
        file.insert(QStringLiteral("top"), state.windowSpot->top);
    }
    if (state.updateCheckedAt) {
        const Seconds since = state.updateCheckedAt->time_since_epoch();
        file.insert(QStringLiteral("updateCheckedAt"), since.count());
    }
    if (state.latestVersion) {
        file.insert(QStringLiteral("latestVersion"), *state.latestVersion);
    }
    return file;
}

} // namespace

PersistedState StateFile::loadState()
{
    constexpr qint64 most = 1'000'000; // bytes
    const std::optional<QByteArray> bytes = readJSON(Paths::state(), most);
    return read(Reader(bytes ? parseObject(*bytes).value_or(QJsonObject()) : QJsonObject()));
}

void StateFile::saveState(const PersistedState &state)
{
    makeDataFolder();
    const QByteArray bytes = QJsonDocument(written(state)).toJson(QJsonDocument::Indented);
    const std::optional<QString> failure = replaceFile(Paths::state(), bytes);
    if (failure && !std::exchange(m_saveFailed, true)) {
        WidgetLog::write(u"state.json not saved: " % *failure);
    }
}
