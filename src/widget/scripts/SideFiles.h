#pragma once

#include "formats/Limits.h"
#include "formats/TimePoint.h"

class WidgetModel;

/// Notices when the two limit files change and gives what they tell to the model.
///
/// A version of a file is known by its stamp, the moment of its modification. A bad version of the
/// Claude file leaves the readings as they are and is logged once.
class SideFiles final {
public:
    explicit SideFiles(WidgetModel &model);

    /// What the Claude file told last.
    [[nodiscard]] const std::optional<Limits> &fileLimits() const { return m_fileLimits; }

    /// Takes the Claude file if it changed; whether there are new readings.
    bool readLimits();
    /// Takes the Codex file if it changed; whether it did. A bad or missing one tells nothing.
    bool readSideFiles();
    /// Takes readings from the account itself; shown with those of the file.
    void setAccountLimits(const std::optional<Limits> &limits);
    /// Lets the next readLimits() take the file even if it has not changed.
    void forgetLimits() { m_limitsStamp.reset(); }

private:
    void mergeLimits();

    WidgetModel &m_model;
    std::optional<TimePoint> m_limitsStamp;  ///< the version last taken
    std::optional<TimePoint> m_limitsFailed; ///< the version last logged as bad
    std::optional<TimePoint> m_codexStamp;   ///< the version last taken
    std::optional<Limits> m_fileLimits;
    std::optional<Limits> m_accountLimits;
};
