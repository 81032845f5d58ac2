#include "usage/values/HashOf.h"

#include <xxhash.h>

namespace usage {

std::uint64_t hashOf(std::string_view text)
{
    return XXH3_64bits(text.data(), text.size());
}

} // namespace usage
