#pragma once

#include <memory>
#include <QObject>

class Strings;

/// The fixed texts of the settings in one language, by their keys in the table of translations.
class SettingsTexts final {
    Q_GADGET

public:
    /// Nothing but empty texts, for a view that is being made.
    SettingsTexts() = default;
    explicit SettingsTexts(std::shared_ptr<const Strings> strings);

    /// The key must be one of those that the settings have.
    Q_INVOKABLE [[nodiscard]] QString label(const QString &key) const;

private:
    std::shared_ptr<const Strings> m_strings;
};
