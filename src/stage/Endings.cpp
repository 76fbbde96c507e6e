#include "stage/Endings.h"

#include "platform/Subscript.h"

namespace tumblewick {

namespace {

using Step = EndingStep;

constexpr Step SpeakerSays(const char *text, bool waits = true, const char *textForSeveral = nullptr)
{
    return { Step::Speak, text, true, kMerlin, waits, textForSeveral };
}

constexpr Step Says(CharacterIndex who, const char *text, const char *textForSeveral = nullptr)
{
    return { Step::Speak, text, false, who, true, textForSeveral };
}

constexpr Step Plays(CharacterIndex who, const char *animation, bool waits = false)
{
    return { Step::Play, animation, false, who, waits };
}

constexpr Step kFinishList = { Step::FinishList };
constexpr Step kTakePerch = { Step::TakePerch };
constexpr Step kHandleEvents = { Step::HandleEvents };
constexpr Step kMerlinLooks = Plays(kMerlin, "Lookleft");
constexpr Step kGenieLooks = Plays(kGenie, "LookLeft");

constexpr bool kNoWait = false;

// clang-format off
constexpr Step kThatsIt[] = {
    SpeakerSays("That's it. You finished the list. Well Done!"),
    kFinishList,
};
constexpr Step kThatsItWithLooks[] = {
    SpeakerSays("That's it. You finished the list. Well Done!"),
    kFinishList,
    kMerlinLooks,
    kGenieLooks,
};
constexpr Step kLastQuestion[] = {
    SpeakerSays("That was the last question."),
    SpeakerSays("Good job! It's good to know that each time you reach the end of a list,", kNoWait),
    SpeakerSays(" you're smarter than when you started!"),
    kFinishList,
};
constexpr Step kGoodPlayer[] = {
    Says(kMerlin, "That's the end of the list. You did a great job!"),
    Says(kGenie, "That's right Merlin. This is a good player I think!",
                 "That's right Merlin. These are good players I think!"),
    kFinishList,
};
constexpr Step kEndOfTheList[] = {
    SpeakerSays("That's the end of the list. Well Done!"),
    kFinishList,
    kMerlinLooks,
    kGenieLooks,
};
constexpr Step kFinishedGoodJob[] = {
    SpeakerSays("You've finished the list! Good job."),
    kFinishList,
};
constexpr Step kGettingSmarter[] = {
    Says(kMerlin, "That's the end of the list. You did a great job!"),
    Says(kGenie, "That's right Merlin. This is a good player I think!",
                 "That's right Merlin. These are good players I think!"),
    Says(kMerlin, "It's good to answer all the questions correctly, but it's most important to see that you are improving. You're getting smarter!"),
    kMerlinLooks,
    kGenieLooks,
    kFinishList,
};
constexpr Step kChampions[] = {
    SpeakerSays("You are a champion! The list is finished.", true,
                "You are champions! The list is finished."),
    kFinishList,
};
constexpr Step kChampion[] = {
    SpeakerSays("You are a champion! The list is finished."),
    kFinishList,
};

constexpr Ending kSpellingEndings[kEndingCount] = {
    { 1, kThatsIt },
    { 2, kLastQuestion },
    { 3, kGoodPlayer },
    { 4, kEndOfTheList },
    { 5, kGettingSmarter },
    { 6, kChampions },
};

constexpr Ending kQuizEndings[kEndingCount] = {
    { 0, kThatsItWithLooks },
    { 2, kLastQuestion },
    { 3, kGoodPlayer },
    { 4, kFinishedGoodJob },
    { 5, kGettingSmarter },
    { 6, kChampion },
};

constexpr Step kMovesOutOfTheWay[] = {
    kHandleEvents,
    Says(kPeedy, "A perfect score here so you get the fireworks!. I sure do like those fireworks. I'll just move out of the way."),
};
constexpr Step kHereTheyCome[] = {
    kMerlinLooks,
    kGenieLooks,
    Says(kPeedy, "Hey Genie that was a perfect score. You know what that means. Here come the perfect score fireworks. I have to get out of the way when those fireworks go off."),
};
constexpr Step kSafePlace[] = {
    kMerlinLooks,
    kGenieLooks,
    Says(kPeedy, "Perfect scoes mean we all get to watch the perfect score fireworks. When the fireworks go off birds need to be in a safe place."),
};
constexpr Step kPerch[] = {
    kTakePerch,
    Says(kPeedy, "The fireworks are coming for this perfect score. Hey Genie, is it OK if I perch here while the fireworks are going? It feels just like sitting on a statue. Lucky I'm not a pidgeon Hey Genie?"),
    Plays(kGenie, "lookup"),
    Plays(kGenie, "lookup"),
    Says(kGenie, "Peedy, my head isn't a bird perch."),
    Says(kPeedy, "Perfect scores mean fireworks!. I get a good view of the fireworks from up here. You might say I'm just trying to keep a head of the game Genie."),
};
constexpr Step kScorchedFeathers[] = {
    Says(kPeedy, "Great job a perfect score means fireworks and I just love seeing the fireworks display, but I don't like the scorched tail feathers."),
};
constexpr Step kPigeonOnAStatue[] = {
    kMerlinLooks,
    kGenieLooks,
    Says(kPeedy, " A perfect score here so you get the fireworks. I have to get out of the way and pretend I am a pidgeon sitting on a statue."),
    Plays(kGenie, "Surprised", true),
};
// clang-format on

constexpr std::span<const Step> kChatter[kEndingCount] = {
    kMovesOutOfTheWay, kHereTheyCome, kSafePlace, kPerch, kScorchedFeathers, kPigeonOnAStatue,
};

} // namespace

const Ending &EndingFor(GameKind kind, int pick)
{
    return platform::At(kind == GameKind::Spelling ? kSpellingEndings : kQuizEndings, pick - 1);
}

std::span<const EndingStep> PerfectScoreChatter(int number)
{
    if (number < 1 || number > kEndingCount)
        return {};
    return kChatter[number - 1];
}

} // namespace tumblewick
