#pragma once

#include <optional>
#include <QObject>

/// Has Codex call our hook, or not, by running the script that knows how.
class CodexHook final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Puts the hook into the wanted state; without Codex or the script there is nothing to do.
    void applyCodexHook(bool launchWithCodex);

private:
    void run(bool on);

    bool m_running = false;
    std::optional<bool> m_next; ///< what was asked for while the script was running
};
