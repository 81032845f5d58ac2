#pragma once

#include <QString>

/// The assistant whose usage is shown.
enum class Provider { Claude, Codex };

/// The name that keys files: "claude", "codex".
[[nodiscard]] QString rawValue(Provider provider);

/// The name that people read: "Claude", "Codex".
[[nodiscard]] QString displayName(Provider provider);
