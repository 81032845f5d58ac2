#pragma once

#include "widget/views/settings/DataPage.h"
#include "widget/views/settings/GeneralPage.h"
#include <memory>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

/// The settings: an ordinary window with two tabs, whose title is the shown one's. It lives as long
/// as it is open.
class SettingsWindow final : public QQuickWindow {
    Q_OBJECT

public:
    SettingsWindow(WidgetModel &model, GeneralSettings &general, SyncSettings &sync);
    ~SettingsWindow() override;
    Q_DISABLE_COPY_MOVE(SettingsWindow)

    /// Shows it before all others, with the keyboard.
    void present();

Q_SIGNALS:
    /// The user has closed it.
    void closed();

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private Q_SLOTS:
    void takeTitle();

private:
    SyncSettings &m_sync;
    GeneralPage m_general;
    DataPage m_data;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_root;
};
