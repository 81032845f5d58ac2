#include "app/StatusMenu.h"

#include "app/menuIcon.h"
#include "app/MenuStyle.h"
#include "model/autostartTitle.h"
#include "model/WidgetModel.h"
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
    QString (*title)(const Shown &) = nullptr; ///< where it is more than the text of a key
    bool (*isChecked)(const Shown &) = nullptr;
    bool (*isVisible)(const Shown &) = nullptr;
    std::optional<Place> opens;
    void (*request)(StatusMenu &) = nullptr;

    [[nodiscard]] bool isSeparator() const { return key.isEmpty() && title == nullptr; }
};

template <Option option> bool isOn(const Shown &shown)
{
    return shown.general.values().value(option, false);
}

template <Option option> void ask(StatusMenu &menu)
{
    Q_EMIT menu.optionRequested(option);
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
    return isOn<Option::Animations>(shown)
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
    Row {.place = Place::View,
        .icon = "panel-top"_L1,
        .key = "menuNotch"_L1,
        .fallback = u"Notch view",
        .isChecked = isOn<Option::Notch>},
    Row {.icon = "pin"_L1,
        .key = "menuTopmost"_L1,
        .isChecked = [](const Shown &shown) { return shown.model.topmost(); },
        .isVisible = isMode<ViewMode::Window>,
        .request = ask<Option::Topmost>},
    Row {.icon = "sparkles"_L1, .title = animationsTitle, .request = ask<Option::Animations>},
    Row {.icon = "refresh-cw"_L1,
        .key = "menuUpdates"_L1,
        .isChecked = isOn<Option::Updates>,
        .request = ask<Option::Updates>},
    Row {.icon = "square-terminal"_L1,
        .key = "menuWithClaude"_L1,
        .isChecked = isOn<Option::WithClaude>,
        .request = ask<Option::WithClaude>},
    Row {.icon = "braces"_L1,
        .key = "menuWithCodex"_L1,
        .fallback = u"Open with Codex",
        .isChecked = isOn<Option::WithCodex>,
        .isVisible = [](const Shown &shown) { return shown.general.codexInstalled(); },
        .request = ask<Option::WithCodex>},
    Row {.icon = "panel-bottom"_L1,
        .key = "menuStatusLine"_L1,
        .fallback = u"Status line in Claude Code",
        .isChecked = isOn<Option::StatusLine>,
        .request = ask<Option::StatusLine>},
    Row {.icon = "power"_L1,
        .title = [](const Shown &shown) { return autostartTitle(*shown.model.strings()); },
        .isChecked = isOn<Option::Autostart>,
        .request = ask<Option::Autostart>},
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
        if (row.isChecked != nullptr) {
            item.setChecked(row.isChecked(shown));
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
        item->setCheckable(row.isChecked != nullptr);
        item->setEnabled(row.opens || row.request != nullptr);
        connect(item, &QAction::triggered, this, [this, request = row.request] {
            if (request != nullptr) {
                request(*this);
                Q_EMIT needsUpdate();
            }
        });
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
