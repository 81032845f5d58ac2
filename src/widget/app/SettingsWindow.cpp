#include "widget/app/SettingsWindow.h"

#include "widget/app/makeView.h"
#include "widget/scripts/SyncSettings.h"
#include <QCloseEvent>

namespace {

constexpr QSize wanted(420, 580);
constexpr QSize least(420, 320);

} // namespace

SettingsWindow::SettingsWindow(WidgetModel &model, GeneralSettings &general, SyncSettings &sync)
    : m_sync(sync)
    , m_general(model, general)
    , m_data(model, sync)
{
    constexpr QColor surface(28, 28, 30);
    setColor(surface);
    m_root = makeView(m_engine, QStringLiteral("settings/Settings.qml"),
        {{QStringLiteral("generalPage"), QVariant::fromValue(&m_general)},
            {QStringLiteral("dataPage"), QVariant::fromValue(&m_data)}});
    m_root->setParentItem(contentItem());
    connect(m_root.get(), SIGNAL(closeRequested()), this, SLOT(close()));
    connect(m_root.get(), SIGNAL(titleChanged()), this, SLOT(takeTitle()));
    takeTitle();
    setMinimumSize(least);
    resize(wanted);
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::present()
{
    if (windowStates() & Qt::WindowMinimized) {
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    }
    show();
    raise();
    requestActivate();
}

void SettingsWindow::takeTitle()
{
    setTitle(m_root->property("title").toString());
}

void SettingsWindow::resizeEvent(QResizeEvent *event)
{
    QQuickWindow::resizeEvent(event);
    m_root->setSize(event->size());
}

bool SettingsWindow::event(QEvent *event)
{
    const bool taken = QQuickWindow::event(event);
    if (event->type() == QEvent::Close && event->isAccepted()) {
        m_sync.forgetEntries();
        Q_EMIT closed();
    }
    return taken;
}

#include "moc_SettingsWindow.cpp"
