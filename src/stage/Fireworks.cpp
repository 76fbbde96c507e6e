#include "stage/Fireworks.h"

#include "shell/SharedState.h"
#include "stage/Waits.h"

#include <array>

namespace tumblewick {

namespace {

constexpr const char *kPointsAtTheClip = nullptr;

struct Reaction {
    CharacterIndex who;
    const char *animation;
};

// clang-format off
constexpr Reaction kReactions[] = {
    /*  1 */ { kMerlin, kPointsAtTheClip },
    /*  2 */ { kMerlin, "Lookleft" },
    /*  3 */ { kMerlin, "Surprised" },
    /*  4 */ { kMerlin, "Pleased" },
    /*  5 */ { kGenie, "Lookleft" },
    /*  6 */ { kGenie, "Surprised" },
    /*  7 */ { kGenie, "Pleased" },
    /*  8 */ { kGenie, "Lookleft" },
    /*  9 */ { kMerlin, kPointsAtTheClip },
    /* 10 */ { kMerlin, "Lookleft" },
    /* 11 */ { kMerlin, "Surprised" },
    /* 12 */ { kMerlin, "Pleased" },
    /* 13 */ { kGenie, "Lookleft" },
    /* 14 */ { kGenie, "Lookleft" },
    /* 15 */ { kGenie, "Lookleft" },
    /* 16 */ { kGenie, "Surprised" },
    /* 17 */ { kGenie, "Pleased" },
    /* 18 */ { kGenie, "Lookleft" },
    /* 19 */ { kPeedy, "Surprised" },
    /* 20 */ { kPeedy, "Lookleft" },
    /* 21 */ { kMerlin, kPointsAtTheClip },
    /* 22 */ { kPeedy, kPointsAtTheClip },
    /* 23 */ { kPeedy, "Lookleft" },
    /* 24 */ { kPeedy, "Surprised" },
    /* 25 */ { kPeedy, "Pleased" },
    /* 26 */ { kGenie, "Pleased" },
    /* 27 */ { kMerlin, "Pleased" },
    /* 28 */ { kPeedy, "Pleased" },
    /* 29 */ { kGenie, "Pleased" },
    /* 30 */ { kMerlin, "Pleased" },
};
// clang-format on

} // namespace

void TakePerch(platform::Integer16 stageY, platform::Integer16 genieAt800,
               platform::RequestReference &request)
{
    const auto &characters = State().Characters;
    if (State().DisplayWidth == 800) {
        request = characters[kMerlin]->MoveTo(-40, stageY + 30);
        request = characters[kGenie]->MoveTo(110, genieAt800);
        WaitRequest(request);
        request = characters[kPeedy]->MoveTo(80, stageY - 70);
    } else {
        request = characters[kPeedy]->MoveTo(170, stageY - 130);
    }
    WaitRequest(request);
}

void ReactToFireworks(platform::RequestReference &merlin, platform::RequestReference &genie,
                      platform::RequestReference &peedy)
{
    const std::array<platform::RequestReference *, kCharacterCount> requests = { &merlin, &genie, &peedy };
    for (const Reaction &reaction : kReactions) {
        const platform::CharacterReference &character = State().Characters[reaction.who];
        *requests[reaction.who] = reaction.animation == kPointsAtTheClip
                                      ? character->GestureAt(kClipLeft, kClipTop)
                                      : character->Play(QString::fromLatin1(reaction.animation));
    }
}

void LeavePerch(platform::Integer16 stageY, platform::RequestReference &request)
{
    const auto &characters = State().Characters;
    if (State().DisplayWidth == 800) {
        characters[kPeedy]->MoveTo(250, stageY - 20);
        characters[kGenie]->MoveTo(130, stageY + 10);
        request = characters[kMerlin]->MoveTo(10, stageY - 20);
    } else {
        // The other two have not moved.
        request = characters[kPeedy]->MoveTo(350, stageY + 20);
    }
    WaitRequest(request);
}

} // namespace tumblewick
