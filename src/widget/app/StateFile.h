#pragma once

#include "widget/model/PersistedState.h"

/// Keeps the persisted state in `state.json`.
class StateFile final {
public:
    /// What the file tells; whatever it does not tell, or tells in a wrong type, is as at the first
    /// start. Nothing is reported of a damaged file.
    [[nodiscard]] static PersistedState loadState();

    /// Replaces the file in one step, with all of the state. A failure is logged once.
    void saveState(const PersistedState &state);

private:
    bool m_saveFailed = false; ///< and was logged
};
