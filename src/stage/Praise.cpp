#include "stage/Praise.h"

#include "platform/system/Chance.h"

namespace tumblewick {

namespace {

constexpr int kCheeringSets = 4;

} // namespace

QStringList PraisePhrases()
{
    // clang-format off
    return {
        QStringLiteral("Good answer "),
        QStringLiteral("Difficult, I didn't know that one myself "),
        QStringLiteral("Very good "),
        QStringLiteral("You got that one right "),
        QStringLiteral("Excellent "),
        QStringLiteral("That's correct "),
        QStringLiteral("What a good answer "),
        QStringLiteral("You're so clever. That was a hard one "),
        QStringLiteral("That's correct. You made that one look easy "),
        QStringLiteral("Correct. You're too good "),
        QStringLiteral("That's another point to you "),
        QStringLiteral("Well done "),
        QStringLiteral("That's right "),
        QStringLiteral("You're right "),
        QStringLiteral("You're so smart "),
        QStringLiteral("Congratulations "),
        QStringLiteral("You're not just a pretty face "),
        QStringLiteral("Cute and clever too "),
    };
    // clang-format on
}

const CheeringSet &CheeringSetFor(GameKind kind, int number)
{
    static const QString once = QStringLiteral("Congratulate");
    static const QString twice = QStringLiteral("Congratulate_2");
    // clang-format off
    static const CheeringSet spellingFirst = { { { kMerlin, twice }, { kGenie, once }, { kPeedy, once } } };
    static const CheeringSet quizFirst     = { { { kMerlin, once }, { kGenie, once }, { kPeedy, once } } };
    static const CheeringSet second        = { { { kMerlin, once }, { kGenie, twice }, { kPeedy, once } } };
    static const CheeringSet third         = { { { kGenie, twice }, { kPeedy, once }, { kMerlin, twice } } };
    // clang-format on
    switch (number) {
    case 1:
        return kind == GameKind::Spelling ? spellingFirst : quizFirst;
    case 3:
        return third;
    case 2:
    case 4:
        return second;
    default:
        throw platform::Error(platform::kSubscriptOutOfRange);
    }
}

int DrawCheeringSet(platform::Chance &chance)
{
    chance.Randomize();
    return platform::Drawn(chance, kCheeringSets, 1);
}

int DrawSpellingPraise(platform::Chance &chance, platform::Integer16 &lastPraise)
{
    chance.Randomize();
    int praise = platform::Drawn(chance, kPraiseCount, 1);
    if (praise == lastPraise)
        praise += praise <= 5 ? 1 : -1;
    lastPraise = praise;
    return praise;
}

int DrawQuizPraise(platform::Chance &chance, platform::Integer16 lastPraise)
{
    chance.Randomize();
    int praise = platform::Drawn(chance, kPraiseCount, 1);
    if (praise == lastPraise)
        praise += praise == kPraiseCount ? -1 : 1;
    return praise;
}

} // namespace tumblewick
