#include "widget/app/StatusMenu.h"

#include "widget/app/menuIcon.h"
#include "widget/app/MenuStyle.h"
#include "widget/model/OptionTable.h"
#include "widget/model/WidgetModel.h"
#include <array>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

using Option = GeneralSettings::Option;

enum class Place { Main, View, Language };

/// What titles, check marks and visibility are derived from.
struct Shown {
    const WidgetModel &model;
    const GeneralSettings &general;
    QString version;
    bool widgetOnTop;
};

/// One item, or a separator where it has no title. Without a request and a submenu it only tells.
struct Row {
    Place place = Place::Main;
    QLatin1String icon;
    QLatin1String key;
    QStringView fallback;                      ///< the English title, if the program carries it
    std::optional<Option> option;              ///< which it shows and switches
    QString (*title)(const Shown &) = nullptr; ///< where it is more than the text of a key
    bool (*isChecked)(const Shown &) = nullptr;
    bool (*isVisible)(const Shown &) = nullptr;
    std::optional<Place> opens;
    void (*request)(StatusMenu &) = nullptr;
    bool isEnabled = true;

    [[nodiscard]] bool isSeparator() const { return key.isEmpty() && !option && title == nullptr; }
    /// An option whose title says what it is has no check mark.
    [[nodiscard]] bool isCheckable() const { return isChecked || (option && title == nullptr); }
    [[nodiscard]] bool isPicked() const { return isEnabled && (option || request); }
};

bool isOn(const Shown &shown, Option option)
{
    return shown.general.values().value(option, false);
}

template <ViewMode mode> bool isMode(const Shown &shown)
{
    return shown.model.mode() == mode;
}

template <ViewMode mode> void askView(StatusMenu &menu)
{
    Q_EMIT menu.viewRequested(mode);
}

bool hasUpdate(const Shown &shown)
{
    return shown.model.update().has_value();
}

QString updateTitle(const Shown &shown)
{
    return shown.model.t(QStringLiteral("menuUpdate"), {shown.model.update().value_or(QString())});
}

QString toggleTitle(const Shown &shown)
{
    return shown.model.t(
        shown.widgetOnTop ? QStringLiteral("menuHide") : QStringLiteral("menuShow"));
}

QString animationsTitle(const Shown &shown)
{
    return isOn(shown, Option::Animations)
        ? shown.model.label(QStringLiteral("menuAnimOff"), QStringLiteral("Disable animations"))
        : shown.model.label(QStringLiteral("menuAnimOn"), QStringLiteral("Enable animations"));
}

QString versionTitle(const Shown &shown)
{
    return shown.model.t(QStringLiteral("menuVersion"), {shown.version});
}

/// From top to bottom, each submenu's items behind the one that opens it.
constexpr std::array rows {
    Row {.icon = "circle-arrow-down"_L1,
        .title = updateTitle,
        .isVisible = hasUpdate,
        .request = [](StatusMenu &menu) { Q_EMIT menu.updateRequested(); }},
    Row {.isVisible = hasUpdate},
    Row {.icon = "app-window"_L1,
        .title = toggleTitle,
        .request = [](StatusMenu &menu) { Q_EMIT menu.toggleWidgetRequested(); }},
    Row {.icon = "chart-column"_L1,
        .key = "menuStats"_L1,
        .isChecked = [](const Shown &shown) { return shown.model.expanded(); },
        .request = [](StatusMenu &menu) { Q_EMIT menu.statsRequested(); }},
    Row {},
    Row {.icon = "settings"_L1,
        .key = "menuSettings"_L1,
        .fallback = u"Settings…",
        .request = [](StatusMenu &menu) { Q_EMIT menu.settingsRequested(); }},
    Row {},
    Row {.icon = "layout-template"_L1, .key = "menuView"_L1, .opens = Place::View},
    Row {.place = Place::View,
        .icon = "mouse-pointer-click"_L1,
        .key = "menuViewIcon"_L1,
        .isChecked = isMode<ViewMode::Icon>,
        .request = askView<ViewMode::Icon>},
    Row {.place = Place::View,
        .icon = "picture-in-picture-2"_L1,
        .key = "menuViewWindow"_L1,
        .isChecked = isMode<ViewMode::Window>,
        .request = askView<ViewMode::Window>},
    Row {.place = Place::View},
    // No screen that we know of has a notch, so this can be seen but not picked.
    Row {.place = Place::View, .icon = "panel-top"_L1, .option = Option::Notch, .isEnabled = false},
    Row {.icon = "pin"_L1, .option = Option::Topmost, .isVisible = isMode<ViewMode::Window>},
    Row {.icon = "sparkles"_L1, .option = Option::Animations, .title = animationsTitle},
    Row {.icon = "refresh-cw"_L1, .option = Option::Updates},
    Row {.icon = "square-terminal"_L1, .option = Option::WithClaude},
    Row {.icon = "braces"_L1,
        .option = Option::WithCodex,
        .isVisible = [](const Shown &shown) { return shown.general.codexInstalled(); }},
    Row {.icon = "panel-bottom"_L1, .option = Option::StatusLine},
    Row {.icon = "power"_L1, .option = Option::Autostart},
    Row {.icon = "globe"_L1, .key = "menuLanguage"_L1, .opens = Place::Language},
    Row {.place = Place::Language,
        .key = "menuSystem"_L1,
        .isChecked = [](const Shown &shown) { return shown.model.langPref().isEmpty(); },
        .request = [](StatusMenu &menu) { Q_EMIT menu.languageRequested(QString()); }},
    Row {.place = Place::Language},
    Row {},
    Row {.icon = "info"_L1, .title = versionTitle},
    Row {.icon = "square-x"_L1,
        .key = "menuExit"_L1,
        .request = [](StatusMenu &menu) { Q_EMIT menu.quitRequested(); }},
};

QString title(const Row &row, const Shown &shown)
{
    if (row.title != nullptr) {
        return row.title(shown);
    }
    if (row.option) {
        return optionTitle(*row.option, *shown.model.strings());
    }
    return row.fallback.isEmpty() ? shown.model.t(row.key)
                                  : shown.model.label(row.key, row.fallback.toString());
}

/// A title that shows as it is: an ampersand would underline the letter behind it.
void setTitle(QAction &item, QString title)
{
    item.setText(title.replace(u'&', "&&"_L1));
}

} // namespace

StatusMenu::StatusMenu(const WidgetModel &model, const GeneralSettings &general, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_general(general)
{
    makeItems();
    refreshMenu(false);
    connect(&m_menu, &QMenu::aboutToShow, this, &StatusMenu::needsUpdate);
}

void StatusMenu::refreshMenu(bool widgetOnTop)
{
    const Shown shown {m_model, m_general, m_version.value_or(QStringLiteral("dev")), widgetOnTop};
    for (std::size_t at = 0; at < rows.size(); ++at) {
        const Row &row = rows.at(at);
        QAction &item = *m_items.at(at);
        if (!row.isSeparator()) {
            setTitle(item, title(row, shown));
        }
        if (row.isCheckable()) {
            item.setChecked(row.option ? isOn(shown, *row.option) : row.isChecked(shown));
        }
        if (row.isVisible != nullptr) {
            item.setVisible(row.isVisible(shown));
        }
    }
    for (QAction *language : m_languageItems) {
        const QString code = language->data().toString();
        setTitle(*language, m_model.languageName(code));
        language->setChecked(code == m_model.langPref());
    }
    refreshIcons();
}

void StatusMenu::makeItems()
{
    const std::array menus {&m_menu, new QMenu(&m_menu), new QMenu(&m_menu)};
    const auto menu = [&](Place place) { return menus.at(std::size_t(place)); };
    for (const Row &row : rows) {
        QAction *item = row.opens ? menu(*row.opens)->menuAction() : new QAction(this);
        item->setSeparator(row.isSeparator());
        item->setCheckable(row.isCheckable());
        item->setEnabled(row.opens || row.isPicked());
        if (row.isPicked()) {
            connect(item, &QAction::triggered, this, [this, &row] {
                row.option ? optionRequested(*row.option) : row.request(*this);
                Q_EMIT needsUpdate();
            });
        }
        menu(row.place)->addAction(item);
        m_items << item;
    }
    makeLanguages(*menu(Place::Language));
    // Other styles have a column for check marks, beside that of the icons.
    if (m_menu.style()->name() == "fusion"_L1) {
        auto *style = new MenuStyle;
        style->setParent(this);
        for (QMenu *styled : menus) {
            styled->setStyle(style);
        }
    }
}

void StatusMenu::makeLanguages(QMenu &submenu)
{
    for (const QString &code : m_model.languages()) {
        QAction *item = submenu.addAction(QString());
        item->setCheckable(true);
        item->setData(code);
        connect(item, &QAction::triggered, this, [this, code] {
            Q_EMIT languageRequested(code);
            Q_EMIT needsUpdate();
        });
        m_languageItems << item;
    }
}

void StatusMenu::refreshIcons()
{
    const qint64 key = QGuiApplication::palette().cacheKey();
    if (key == m_paletteKey) {
        return;
    }
    m_paletteKey = key;
    for (std::size_t at = 0; at < rows.size(); ++at) {
        if (!rows.at(at).icon.isEmpty()) {
            m_items.at(at)->setIcon(menuIcon(rows.at(at).icon));
        }
    }
}

#include "moc_StatusMenu.cpp"
