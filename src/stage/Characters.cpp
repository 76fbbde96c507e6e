#include "stage/Characters.h"

#include "shell/SharedState.h"

namespace tumblewick {

namespace {

struct CastMember {
    CharacterIndex index;
    const char *id;
    const char *file;
};

constexpr CastMember kCast[] = {
    { kMerlin, "Merlin", "Merlin.acs" },
    { kGenie, "Genie", "Genie.acs" },
    { kPeedy, "Peedy", "Peedy.acs" },
};

} // namespace

void LoadCharacters()
{
    using platform::Integer16;
    SharedState &state = State();
    for (const CastMember &member : kCast) {
        const QString id = QString::fromLatin1(member.id);
        state.AgentControl->Load(id, QString::fromLatin1(member.file));
        const auto character = state.AgentControl->Character(id);
        state.Characters[member.index] = character;
        character->SetHeight(Integer16(character->Height() * 2));
        character->SetWidth(Integer16(character->Width() * 2));
    }
}

void RebindCharacters()
{
    SharedState &state = State();
    for (const CastMember &member : kCast)
        state.Characters[member.index] = state.AgentControl->Character(QString::fromLatin1(member.id));
}

void ConnectCharacters(const platform::AgentControlReference &agent1)
{
    State().AgentControl = agent1;
    LoadCharacters();
    RebindCharacters();
}

} // namespace tumblewick
