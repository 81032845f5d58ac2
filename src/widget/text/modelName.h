#pragma once

#include <QString>

/// The display name of a model identifier: claude-opus-4-1 is "Opus 4.1", gpt-5-codex
/// "GPT-5-codex". An identifier without a name in it is its own.
[[nodiscard]] QString modelName(const QString &id);
