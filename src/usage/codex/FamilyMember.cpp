#include "usage/codex/FamilyMember.h"

namespace usage {

TextId FamilyMember::threadOf(const RolloutRecord &record) const
{
    return record.thread == 0 ? thread : texts[record.thread];
}

RolloutSettings FamilyMember::settings(std::uint32_t number) const
{
    RolloutSettings settings = rollout.settings[number];
    settings.model = texts[settings.model];
    settings.folder = texts[settings.folder];
    return settings;
}

FamilyMember rolloutFile(Rollout rollout, TextPool &names)
{
    FamilyMember file {.rollout = std::move(rollout), .thread = 0, .texts = {}};
    const OwnTexts &texts = file.rollout.texts;
    for (TextId id = 0; id < texts.size(); ++id) {
        file.texts.push_back(names.add(texts.text(id)));
    }
    file.thread = file.texts[file.rollout.thread];
    return file;
}

} // namespace usage
