#pragma once

#include "widget/model/SettingsTexts.h"
#include "widget/views/settings/LinkedDevices.h"
#include <QtQml/qqmlregistration.h>

class SyncSettings;
class WidgetModel;

/// What the settings' second tab shows and asks for.
class DataPage final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(SettingsTexts texts READ texts NOTIFY textsChanged)
    Q_PROPERTY(SyncSettings *sync READ sync CONSTANT)
    Q_PROPERTY(LinkedDevices *devices READ devices CONSTANT)
    Q_PROPERTY(QString deviceId READ deviceId NOTIFY statusChanged)
    Q_PROPERTY(bool hasPassword READ hasPassword NOTIFY statusChanged)
    Q_PROPERTY(bool syncing READ syncing NOTIFY statusChanged)
    Q_PROPERTY(QString syncNote READ syncNote NOTIFY noteChanged)

public:
    DataPage(const WidgetModel &model, SyncSettings &sync, QObject *parent = nullptr);

    [[nodiscard]] SettingsTexts texts() const;
    [[nodiscard]] SyncSettings *sync() const { return &m_sync; }
    [[nodiscard]] LinkedDevices *devices() { return &m_devices; }
    /// Empty until the sync script has given this device one.
    [[nodiscard]] QString deviceId() const;
    [[nodiscard]] bool hasPassword() const;
    [[nodiscard]] bool syncing() const;
    /// When the last sync was, or that nothing is sent.
    [[nodiscard]] QString syncNote() const;

    Q_INVOKABLE void copyDeviceId() const;

Q_SIGNALS:
    void textsChanged();
    void statusChanged();
    void noteChanged();

private:
    const WidgetModel &m_model;
    SyncSettings &m_sync;
    LinkedDevices m_devices;
};
