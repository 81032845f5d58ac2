#pragma once

#include <QString>

/// Sees to it that one copy runs for a user. The system itself lets go of the hold when the process
/// ends, however it ends, so none can be left behind.
class SingleInstance final {
public:
    /// Tries to take hold of the file, which is made where it is missing.
    explicit SingleInstance(const QString &file);
    ~SingleInstance();
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;

    /// Another process has the file. Where it cannot be made at all, nobody has it.
    [[nodiscard]] bool anotherRuns() const { return m_anotherRuns; }

private:
    int m_file = -1;
    bool m_anotherRuns = false;
};
