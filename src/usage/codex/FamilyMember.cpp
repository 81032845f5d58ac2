#include "usage/codex/FamilyMember.h"

namespace indexer {

TextId RolloutFile::threadOf(const RolloutRecord &record) const
{
    return record.thread == 0 ? thread : texts[record.thread];
}

RolloutSettings RolloutFile::settings(std::uint32_t number) const
{
    RolloutSettings settings = rollout.settings[number];
    settings.model = texts[settings.model];
    settings.folder = texts[settings.folder];
    return settings;
}

RolloutFile rolloutFile(Rollout rollout, TextPool &names)
{
    RolloutFile file {.rollout = std::move(rollout), .thread = 0, .texts = {}};
    const OwnTexts &texts = file.rollout.texts;
    for (TextId id = 0; id < texts.size(); ++id) {
        file.texts.push_back(names.add(texts.text(id)));
    }
    file.thread = file.texts[file.rollout.thread];
    return file;
}

} // namespace indexer
