#include "widget/app/StatusMenu.h"

#include "FakeClock.h"
#include "TestFiles.h"
#include "widget/core/Paths.h"
#include "widget/model/WidgetModel.h"

namespace {

using Option = GeneralSettings::Option;

/// What a person sees: check marks as "*", what cannot be picked in brackets, submenus in braces.
QString seen(const QMenu &menu)
{
    QStringList items;
    for (const QAction *item : menu.actions()) {
        if (!item->isVisible()) {
            continue;
        }
        QString text = item->isSeparator() ? QStringLiteral("-") : item->text();
        text = item->isSeparator() || item->isEnabled() ? text : QString(u'(' % text % u')');
        text = item->isChecked() ? QString(u'*' % text) : text;
        items << (item->menu() ? QString(text % u'{' % seen(*item->menu()) % u'}') : text);
    }
    return items.join(u'|');
}

class StatusMenuTest : public testing::Test {
protected:
    void SetUp() override
    {
        writeFile(Paths::i18n(), R"({
            "en": {"langName": "English", "menuWithWindows": "Windows & Windows",
                   "menuVersion": "at {0}", "menuUpdate": "get {0}"},
            "de": {"langName": "Deutsch", "menuExit": "Beenden", "menuSettings": "Optionen"}})");
        m_model = std::make_unique<WidgetModel>(m_clock, [] { return QStringList(); });
        m_menu = std::make_unique<StatusMenu>(*m_model, m_general);
    }

    FakeClock m_clock {TimePoint()};
    GeneralSettings m_general {nullptr};
    std::unique_ptr<WidgetModel> m_model;
    std::unique_ptr<StatusMenu> m_menu;
};

TEST_F(StatusMenuTest, showsTheStateOfTheMoment)
{
    m_menu->refreshMenu(false);
    EXPECT_EQ(seen(m_menu->menu()).toStdString(),
        "menuShow|menuStats|-|Settings…|-|menuView{*menuViewIcon|menuViewWindow|-|(Notch view)}|"
        "Enable animations|menuUpdates|menuWithClaude|Status line in Claude Code|Linux && Linux|"
        "menuLanguage{*menuSystem|-|English|Deutsch}|-|(at dev)|menuExit");

    m_model->setLanguage(QStringLiteral("de"));
    m_model->setMode(ViewMode::Window);
    m_model->setExpanded(true);
    m_model->setUpdate(QStringLiteral("2.0"));
    m_general.setCodexInstalled(true);
    m_general.setValues({{Option::Animations, true}, {Option::Updates, true},
        {Option::WithClaude, true}, {Option::WithCodex, true}, {Option::StatusLine, true},
        {Option::Autostart, true}, {Option::Notch, true}, {Option::Topmost, true}});
    m_menu->setVersion(QStringLiteral("1.0"));
    m_menu->refreshMenu(true);
    EXPECT_EQ(seen(m_menu->menu()).toStdString(),
        "get 2.0|-|menuHide|*menuStats|-|Optionen|-|"
        "menuView{menuViewIcon|*menuViewWindow|-|*(Notch view)}|*menuTopmost|Disable animations|"
        "*menuUpdates|*menuWithClaude|*Open with Codex|*Status line in Claude Code|"
        "*Linux && Linux|menuLanguage{menuSystem|-|English|*Deutsch}|-|(at 1.0)|Beenden");
}

TEST_F(StatusMenuTest, asksForWhatIsPickedAndThenShowsWhatCameOfIt)
{
    QStringList asked;
    const auto note = [&asked](const QString &what) { asked << what; };
    m_menu->connect(m_menu.get(), &StatusMenu::updateRequested, [=] { note(u"update"_qs); });
    m_menu->connect(m_menu.get(), &StatusMenu::toggleWidgetRequested, [=] { note(u"toggle"_qs); });
    m_menu->connect(m_menu.get(), &StatusMenu::statsRequested, [=] { note(u"stats"_qs); });
    m_menu->connect(m_menu.get(), &StatusMenu::settingsRequested, [=] { note(u"settings"_qs); });
    m_menu->connect(m_menu.get(), &StatusMenu::quitRequested, [=] { note(u"quit"_qs); });
    m_menu->connect(m_menu.get(), &StatusMenu::viewRequested,
        [=](ViewMode mode) { note(mode == ViewMode::Icon ? u"icon"_qs : u"window"_qs); });
    m_menu->connect(m_menu.get(), &StatusMenu::languageRequested,
        [=](const QString &code) { note(u"language=" % code); });
    m_menu->connect(m_menu.get(), &StatusMenu::optionRequested,
        [=](Option option) { note(QVariant::fromValue(option).toString()); });
    m_menu->connect(m_menu.get(), &StatusMenu::needsUpdate, [this] { m_menu->refreshMenu(false); });
    const QString before = seen(m_menu->menu());

    for (const QMenu *menu :
        QList<const QMenu *> {&m_menu->menu()} + m_menu->menu().findChildren<const QMenu *>()) {
        for (QAction *item : menu->actions()) {
            item->trigger();
        }
    }
    EXPECT_EQ(asked.join(u' ').toStdString(),
        "update toggle stats settings Topmost Animations Updates WithClaude WithCodex StatusLine "
        "Autostart quit icon window language= language=en language=de");
    EXPECT_EQ(seen(m_menu->menu()), before);

    m_model->setExpanded(true);
    Q_EMIT m_menu->menu().aboutToShow();
    EXPECT_NE(seen(m_menu->menu()), before);
}

} // namespace
