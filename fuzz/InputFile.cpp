#include "InputFile.h"

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

InputFile::InputFile()
    : m_descriptor(memfd_create("input", MFD_CLOEXEC))
    , m_path("/proc/self/fd/" + std::to_string(m_descriptor))
{
}

InputFile::~InputFile()
{
    close(m_descriptor);
}

void InputFile::write(std::string_view content) const
{
    if (ftruncate(m_descriptor, 0) != 0
        || pwrite(m_descriptor, content.data(), content.size(), 0)
            != static_cast<ssize_t>(content.size())) {
        std::perror("fuzz: no memory for the input");
        std::exit(1);
    }
}
