#pragma once

#include "widget/model/GeneralSettings.h"
#include "widget/model/SettingsTexts.h"
#include <QtQml/qqmlregistration.h>

class WidgetModel;

/// What the settings' first tab shows and asks for. An option that is written is only asked for;
/// its new value comes back once it holds.
class GeneralPage final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(SettingsTexts texts READ texts NOTIFY textsChanged)
    Q_PROPERTY(QList<bool> values READ values NOTIFY valuesChanged)
    Q_PROPERTY(QList<QString> titles READ titles NOTIFY textsChanged)
    Q_PROPERTY(bool codexInstalled READ codexInstalled NOTIFY valuesChanged)
    Q_PROPERTY(QList<QString> viewNames READ viewNames NOTIFY textsChanged)
    Q_PROPERTY(int view READ view NOTIFY viewChanged)
    Q_PROPERTY(QList<QString> languageNames READ languageNames NOTIFY textsChanged)
    Q_PROPERTY(int language READ language NOTIFY textsChanged)
    Q_PROPERTY(QString update READ update NOTIFY updateChanged)

public:
    GeneralPage(const WidgetModel &model, GeneralSettings &settings, QObject *parent = nullptr);

    [[nodiscard]] SettingsTexts texts() const;
    /// Which options are on; each stands at the place of its number, as its title does.
    [[nodiscard]] QList<bool> values() const;
    [[nodiscard]] QStringList titles() const;
    /// Whether opening with Codex is offered at all.
    [[nodiscard]] bool codexInstalled() const { return m_settings.codexInstalled(); }
    [[nodiscard]] QStringList viewNames() const;
    /// Which of them is taken.
    [[nodiscard]] int view() const;
    /// First that the system's is followed, then each language by its own name.
    [[nodiscard]] QStringList languageNames() const;
    [[nodiscard]] int language() const;
    /// Title of the button that gets the offered version; empty where none is offered.
    [[nodiscard]] QString update() const;

    /// Asks for the other state of an option.
    Q_INVOKABLE void flip(int option);
    Q_INVOKABLE void selectView(int index);
    Q_INVOKABLE void selectLanguage(int index);
    Q_INVOKABLE void getUpdate();

Q_SIGNALS:
    void textsChanged();
    void valuesChanged();
    void viewChanged();
    void updateChanged();

private:
    const WidgetModel &m_model;
    GeneralSettings &m_settings;
};
