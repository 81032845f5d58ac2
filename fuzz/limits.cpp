// Claude Code's limits, as its status line writes them.

#include "formats/Limits.h"
#include "formats/Limit.h"
#include "ShownLimits.h"
#include "WidgetTarget.h"

void tryInput(const QByteArray &bytes)
{
    if (const std::optional<Limits> limits =
            Limits::parse({bytes.constData(), static_cast<std::size_t>(bytes.size())})) {
        lookAt(*limits, Limit::fiveHours, Limit::week);
    }
}
