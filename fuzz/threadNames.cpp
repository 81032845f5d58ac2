// The names that the user gave to Codex's threads.

#include "usage/codex/ThreadNames.h"
#include "InputFile.h"
#include "require.h"

#include <nlohmann/json.hpp>

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static const InputFile file;
    file.write({data, size});
    const bool isRead = usage::readThreadNames(file.path(), [](const usage::ThreadName &name) {
        require(!name.thread.empty());
        // Both end up in a JSON file, which throws at what is not UTF-8.
        require(!nlohmann::json({name.thread, name.name}).dump().empty());
    });
    require(isRead);
    return 0;
}
