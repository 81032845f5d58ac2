#pragma once

#include <filesystem>
#include <string_view>

/// A file in memory whose content is replaced over and over.
class InputFile final {
public:
    InputFile();
    ~InputFile();
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const { return m_path; }

    void write(std::string_view content) const;

private:
    int m_descriptor;
    std::filesystem::path m_path;
};
