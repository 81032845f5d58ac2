// Codex's limits, as the indexer and the hook write them.

#include "formats/CodexLimits.h"
#include "ShownLimits.h"
#include "WidgetTarget.h"

void tryInput(const QByteArray &bytes)
{
    const std::optional<CodexLimits> codex =
        CodexLimits::parse({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (!codex) {
        return;
    }
    const Limits &limits = codex->limits;
    require(isSane(codex->primaryLength.count()) && isSane(codex->secondaryLength.count()));
    require(limits.fiveHour || (!limits.sevenDay && codex->primaryLength == Limit::fiveHours));
    require(limits.sevenDay || codex->secondaryLength == Limit::week);
    // In their order; one that does not tell its length stands first, whatever it is taken for.
    require(!limits.sevenDay || codex->primaryLength == Limit::fiveHours
        || codex->primaryLength <= codex->secondaryLength);
    lookAt(limits, codex->primaryLength, codex->secondaryLength);
}
