#pragma once

#include "model/GeneralSettings.h"
#include "model/SettingsTexts.h"
#include <QtQml/qqmlregistration.h>

class WidgetModel;

/// What the settings' first tab shows and asks for. An option that is written is only asked for;
/// its new value comes back once it holds.
class GeneralPage final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(SettingsTexts texts READ texts NOTIFY textsChanged)
    Q_PROPERTY(bool autostart READ autostart WRITE setAutostart NOTIFY valuesChanged)
    Q_PROPERTY(bool withClaude READ withClaude WRITE setWithClaude NOTIFY valuesChanged)
    Q_PROPERTY(bool withCodex READ withCodex WRITE setWithCodex NOTIFY valuesChanged)
    Q_PROPERTY(bool codexInstalled READ codexInstalled NOTIFY valuesChanged)
    Q_PROPERTY(bool statusLine READ statusLine WRITE setStatusLine NOTIFY valuesChanged)
    Q_PROPERTY(bool topmost READ topmost WRITE setTopmost NOTIFY valuesChanged)
    Q_PROPERTY(bool animations READ animations WRITE setAnimations NOTIFY valuesChanged)
    Q_PROPERTY(bool updates READ updates WRITE setUpdates NOTIFY valuesChanged)
    Q_PROPERTY(QList<QString> viewNames READ viewNames NOTIFY textsChanged)
    Q_PROPERTY(int view READ view NOTIFY viewChanged)
    Q_PROPERTY(QList<QString> languageNames READ languageNames NOTIFY textsChanged)
    Q_PROPERTY(int language READ language NOTIFY textsChanged)
    Q_PROPERTY(QString update READ update NOTIFY updateChanged)

public:
    GeneralPage(const WidgetModel &model, GeneralSettings &settings, QObject *parent = nullptr);

    [[nodiscard]] SettingsTexts texts() const;
    [[nodiscard]] bool autostart() const { return isOn(Option::Autostart); }
    [[nodiscard]] bool withClaude() const { return isOn(Option::WithClaude); }
    [[nodiscard]] bool withCodex() const { return isOn(Option::WithCodex); }
    /// Whether the option before is offered at all.
    [[nodiscard]] bool codexInstalled() const { return m_settings.codexInstalled(); }
    [[nodiscard]] bool statusLine() const { return isOn(Option::StatusLine); }
    [[nodiscard]] bool topmost() const { return isOn(Option::Topmost); }
    [[nodiscard]] bool animations() const { return isOn(Option::Animations); }
    [[nodiscard]] bool updates() const { return isOn(Option::Updates); }
    [[nodiscard]] QStringList viewNames() const;
    /// Which of them is taken.
    [[nodiscard]] int view() const;
    /// First that the system's is followed, then each language by its own name.
    [[nodiscard]] QStringList languageNames() const;
    [[nodiscard]] int language() const;
    /// Title of the button that gets the offered version; empty where none is offered.
    [[nodiscard]] QString update() const;

    void setAutostart(bool on) { set(Option::Autostart, on); }
    void setWithClaude(bool on) { set(Option::WithClaude, on); }
    void setWithCodex(bool on) { set(Option::WithCodex, on); }
    void setStatusLine(bool on) { set(Option::StatusLine, on); }
    void setTopmost(bool on) { set(Option::Topmost, on); }
    void setAnimations(bool on) { set(Option::Animations, on); }
    void setUpdates(bool on) { set(Option::Updates, on); }
    Q_INVOKABLE void selectView(int index);
    Q_INVOKABLE void selectLanguage(int index);
    Q_INVOKABLE void getUpdate();

Q_SIGNALS:
    void textsChanged();
    void valuesChanged();
    void viewChanged();
    void updateChanged();

private:
    using Option = GeneralSettings::Option;

    [[nodiscard]] bool isOn(Option option) const { return m_settings.binding(option).value(); }
    void set(Option option, bool on) { m_settings.binding(option).set(on); }

    const WidgetModel &m_model;
    GeneralSettings &m_settings;
};
