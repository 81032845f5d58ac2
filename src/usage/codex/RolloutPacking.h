#pragma once

#include "usage/codex/Rollout.h"

#include <optional>
#include <string>
#include <string_view>

namespace usage {

/// A rollout as bytes, the same for equal rollouts.
[[nodiscard]] std::string packed(const Rollout &rollout);

/// Nothing when the bytes are damaged, or were packed in another form.
[[nodiscard]] std::optional<Rollout> unpackedRollout(std::string_view bytes);

} // namespace usage
