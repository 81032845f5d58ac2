// The names that the user gave to Codex's threads.

#include "indexer/ThreadNames.h"
#include "InputFile.h"
#include "require.h"

#include <nlohmann/json.hpp>
#include <set>

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static const InputFile file;
    file.write({data, size});
    const auto names = indexer::readThreadNames(file.path());
    require(names.has_value());
    std::set<std::string> threads;
    for (const indexer::ThreadName &name : *names) {
        require(threads.insert(name.thread).second);
        // Both end up in a JSON file, which throws at what is not UTF-8.
        require(!nlohmann::json({name.thread, name.name}).dump().empty());
    }
    return 0;
}
