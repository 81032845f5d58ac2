#include "widget/views/settings/DataPage.h"

#include "widget/core/IsoParser.h"
#include "widget/model/dayAndTime.h"
#include "widget/model/WidgetModel.h"
#include "widget/scripts/SyncSettings.h"
#include <QClipboard>
#include <QGuiApplication>

DataPage::DataPage(const WidgetModel &model, SyncSettings &sync, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_sync(sync)
    , m_devices(model, sync, nullptr)
{
    connect(&model, &WidgetModel::stringsChanged, this, &DataPage::textsChanged);
    connect(&model, &WidgetModel::stringsChanged, this, &DataPage::noteChanged);
    connect(&model, &WidgetModel::nowChanged, this, &DataPage::noteChanged);
    connect(&sync, &SyncSettings::statusChanged, this, &DataPage::statusChanged);
    connect(&sync, &SyncSettings::statusChanged, this, &DataPage::noteChanged);
}

SettingsTexts DataPage::texts() const
{
    return SettingsTexts(m_model.strings());
}

QString DataPage::deviceId() const
{
    return m_sync.status().id.value_or(QString());
}

bool DataPage::hasPassword() const
{
    return m_sync.status().hasPassword.value_or(false);
}

bool DataPage::syncing() const
{
    return m_sync.syncing();
}

QString DataPage::syncNote() const
{
    if (!syncing()) {
        return m_model.label(
            QStringLiteral("syncOffNote"), QStringLiteral("Nothing leaves this computer."));
    }
    const QString last = m_sync.status().lastSync.value_or(QString()).simplified();
    if (last.isEmpty()) {
        return m_model.label(QStringLiteral("syncNever"), QStringLiteral("Not synced yet"));
    }
    const std::optional<TimePoint> moment = isoParser()(QStringView(last));
    return m_model.label(QStringLiteral("syncAt"), QStringLiteral("Synced {0}"))
        .replace(QStringLiteral("{0}"),
            moment ? dayAndTime(*m_model.strings(), *moment, m_model.now()) : last);
}

void DataPage::copyDeviceId() const
{
    QGuiApplication::clipboard()->setText(deviceId());
}

#include "moc_DataPage.cpp"
