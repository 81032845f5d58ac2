#pragma once

#include "widget/model/ViewMode.h"
#include <QMap>
#include <QObject>

/// The general options as a settings view shows them. It only mirrors: what the user flips is asked
/// of the shell, and comes back by `setValues`.
class GeneralSettings final : public QObject {
    Q_OBJECT

public:
    enum class Option {
        Topmost,
        Notch,
        StatusLine,
        Animations,
        Autostart,
        WithClaude,
        WithCodex,
        Updates
    };
    Q_ENUM(Option)

    /// A view's two-way boolean for one option.
    class Binding final {
    public:
        Binding(GeneralSettings &settings, Option option)
            : m_settings(settings)
            , m_option(option)
        {
        }

        [[nodiscard]] bool value() const { return m_settings.values().value(m_option, false); }
        void set(bool on) const { Q_EMIT m_settings.setRequested(m_option, on); }

    private:
        GeneralSettings &m_settings;
        Option m_option;
    };

    explicit GeneralSettings(QObject *parent);

    [[nodiscard]] const QMap<Option, bool> &values() const { return m_values; }
    /// Codex has a folder of its own here, so that it can be told to open the widget.
    [[nodiscard]] bool codexInstalled() const { return m_codexInstalled; }
    [[nodiscard]] Binding binding(Option option) { return {*this, option}; }

    void setValues(const QMap<Option, bool> &values);
    void setCodexInstalled(bool installed);

Q_SIGNALS:
    void valuesChanged();
    void codexInstalledChanged();
    void setRequested(GeneralSettings::Option option, bool on);
    void viewRequested(ViewMode mode);
    void languageRequested(const QString &code);
    void updateRequested();

private:
    QMap<Option, bool> m_values;
    bool m_codexInstalled = false;
};
