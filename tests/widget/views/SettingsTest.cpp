#include "FakeClock.h"
#include "TestFiles.h"
#include "widget/app/SettingsWindow.h"
#include "widget/core/Paths.h"
#include "widget/model/WidgetModel.h"
#include "widget/scripts/SyncSettings.h"
#include "widget/views/theme/Motion.h"
#include <gtest/gtest.h>
#include <QAccessible>
#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

using Option = GeneralSettings::Option;

class Settings : public testing::Test {
protected:
    void SetUp() override
    {
        Motion::setReduced(true);
        m_general.setCodexInstalled(true);
        m_window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    }

    void TearDown() override { Motion::setReduced(false); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&m_window, key, modifiers);
    }

    /// The control that has the keyboard, as a screen reader is told of it.
    [[nodiscard]] QAccessibleInterface *focused()
    {
        return QAccessible::queryAccessibleInterface(m_window.activeFocusItem());
    }

    [[nodiscard]] std::string name()
    {
        return focused() ? focused()->text(QAccessible::Name).toStdString() : "";
    }

    /// Those that the Tab key leads to after this one, until it leads to the last one named.
    [[nodiscard]] std::string walkTo(const std::string &last)
    {
        std::string names;
        for (int stops = 0; stops < 20 && name() != last; ++stops) {
            press(Qt::Key_Tab);
            names += name() + "; ";
        }
        EXPECT_EQ(name(), last);
        return names;
    }

    void link(int devices)
    {
        SyncStatus status {.id = u"own"_qs, .hasPassword = true, .links = QList<SyncLink>()};
        for (int i = 0; i < devices; ++i) {
            *status.links << SyncLink {.id = u"id %1"_qs.arg(i)};
        }
        m_sync.apply(status);
    }

    FakeClock m_clock {TimePoint()};
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    GeneralSettings m_general {nullptr};
    SyncSettings m_sync {m_model};
    SettingsWindow m_window {m_model, m_general, m_sync};
};

TEST_F(Settings, haveEveryControlOfTheShownTabOnTheKeyboardsWay)
{
    const std::string server = "Don’t sync with the server; Sync now; Delete history…; ";
    EXPECT_EQ(walkTo("menuUpdates"),
        "Settings; menuWithLinux; menuWithClaude; Open with Codex; Status line in Claude Code; "
        "menuView; menuTopmost; menuLanguage; Animations; menuUpdates; ");
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(walkTo("Delete history…"),
        "Name; Save; Password; Set; Device ID; Password; Link; " + server);
    link(1'000);
    EXPECT_EQ(walkTo("Settings"), "Settings; ");
    EXPECT_EQ(walkTo("Delete history…"),
        "Copy; Name; Save; Change; Remove; id 0; Unlink; Device ID; Password; Link; " + server);
}

TEST_F(Settings, leadTheKeyboardOnWhereItsControlGoes)
{
    link(1'000);
    press(Qt::Key_Tab, Qt::ControlModifier);
    std::ignore = walkTo("Change");
    press(Qt::Key_Return);
    std::ignore = walkTo("New password");
    press(Qt::Key_Escape);
    EXPECT_EQ(name(), "Change");
    std::ignore = walkTo("id 0");
    for (int i = 0; i < 700; ++i) {
        press(Qt::Key_Down);
    }
    EXPECT_EQ(name(), "id 700");
    const auto comesTo = [this](const std::string &wanted) {
        return QTest::qWaitFor([&] { return name() == wanted; });
    };
    link(1);
    EXPECT_TRUE(comesTo("id 0")) << name();
    link(0);
    EXPECT_TRUE(comesTo("Device ID")) << name();
}

const QQuickItem *findText(const QQuickItem &item, const QString &text)
{
    for (const QQuickItem *child : item.childItems()) {
        if (child->isVisible() && child->property("text") == text) {
            return child;
        }
        if (const QQuickItem *found = findText(*child, text)) {
            return found;
        }
    }
    return nullptr;
}

TEST_F(Settings, showTheWholeDeviceId)
{
    const QString id = u"WMWM-WMWM-WMWM"_qs;
    press(Qt::Key_Tab, Qt::ControlModifier);
    m_sync.apply({.id = id});
    QCoreApplication::processEvents();
    for (const int width : {m_window.width(), m_window.minimumWidth()}) {
        m_window.resize(width, m_window.height());
        QCoreApplication::processEvents();
        const QQuickItem *shown = findText(*m_window.contentItem(), id);
        ASSERT_TRUE(shown);
        EXPECT_FALSE(shown->property("truncated").toBool());
        EXPECT_GE(shown->width(), shown->implicitWidth());
    }
}

TEST_F(Settings, askForAnOptionAndShowWhatHolds)
{
    QSignalSpy asked(&m_general, &GeneralSettings::setRequested);
    std::ignore = walkTo("menuTopmost");
    press(Qt::Key_Space);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0][0].value<Option>(), Option::Topmost);
    EXPECT_TRUE(asked[0][1].toBool());
    EXPECT_FALSE(focused()->state().checked);
    m_general.setValues({{Option::Topmost, true}});
    EXPECT_TRUE(focused()->state().checked);
}

TEST_F(Settings, closeTheListBeforeThemselves)
{
    QSignalSpy closed(&m_window, &SettingsWindow::closed);
    QSignalSpy chosen(&m_general, &GeneralSettings::languageRequested);
    std::ignore = walkTo("menuLanguage");
    for (const auto last : {Qt::Key_Escape, Qt::Key_Return}) {
        press(Qt::Key_Space);
        press(last);
    }
    EXPECT_EQ(chosen.size(), 1);
    EXPECT_EQ(closed.size(), 0);
    EXPECT_EQ(name(), "menuLanguage");
    press(Qt::Key_Escape);
    EXPECT_EQ(closed.size(), 1);
}

TEST_F(Settings, deleteNothingThatIsNotConfirmed)
{
    press(Qt::Key_Tab, Qt::ControlModifier);
    std::ignore = walkTo("Delete history…");
    for (const auto refusal : {Qt::Key_Return, Qt::Key_Escape}) {
        press(Qt::Key_Return);
        EXPECT_EQ(name(), "Cancel");
        press(refusal);
        EXPECT_EQ(name(), "Delete history…");
    }
    EXPECT_EQ(m_sync.problemText(), QString());
    press(Qt::Key_Return);
    EXPECT_EQ(walkTo("Delete"), "Delete; ");
    press(Qt::Key_Return);
    EXPECT_EQ(m_sync.problemText(), u"needNode") << "it has been tried, without the script";
}

TEST_F(Settings, keepTheKeyboardAndWhatIsTypedDuringACommand)
{
    writeFile(Paths::sync(), "");
    press(Qt::Key_Tab, Qt::ControlModifier);
    std::ignore = walkTo("Name");
    const QQuickItem *field = m_window.activeFocusItem();
    press(Qt::Key_X);
    press(Qt::Key_Return);
    EXPECT_TRUE(m_sync.busy() && !field->isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_sync.busy(); }));
    EXPECT_EQ(m_window.activeFocusItem(), field);
    EXPECT_EQ(field->property("text"), u"x"_qs);
    QFile::remove(Paths::sync());
}

} // namespace
