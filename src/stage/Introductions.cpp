#include "stage/Introductions.h"

#include "platform/forms/Twips.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "stage/Waits.h"

#include <array>
#include <vector>

namespace tumblewick {

namespace {

enum class Act {
    Show,
    Hide,
    Stop,
    Play,
    Speak,
    MoveTo,
    MoveToCorner, // to the corner of a display of 800, to the given place on any other
    MarkMenuShown,
};

// What holds the script behind a step.
enum class Wait { None, Sound, Plain, Skippable };

// The line that the menu's title gives, known when the script runs.
constexpr int kStageLine = -1;

struct Step {
    CharacterIndex who;
    Act act;
    const char *text; // what is played or spoken
    Wait wait = Wait::None;
    int x = 0, y = 0;
    std::array<int, 2> waitsOn = {}; // step numbers counted from 1; 0 for the step itself
};

// clang-format off
constexpr Step kIntroOne[] = {
    /*  1 */ { kMerlin, Act::Show, nullptr },
    /*  2 */ { kMerlin, Act::Play, "Greet" },
    /*  3 */ { kMerlin, Act::Speak, "Hello, Merlin is here !", Wait::Sound },
    /*  4 */ { kMerlin, Act::Speak, "Welcome to Tumble Wick" },
    /*  5 */ { kMerlin, Act::MoveTo, nullptr, Wait::None, 500, kStageLine },
    /*  6 */ { kMerlin, Act::Speak, "When Genie and Peedy arrive we'll be ready to help you learn faster !" },
    /*  7 */ { kMerlin, Act::Play, "Explain" },
    /*  8 */ { kMerlin, Act::Speak, "Learning new things can be a lot of fun." },
    /*  9 */ { kMerlin, Act::Play, "think" },
    /* 10 */ { kMerlin, Act::Speak, "I don't know where Genie and Peedy are right now" },
    /* 11 */ { kMerlin, Act::Play, "Alert" },
    /* 12 */ { kMerlin, Act::Speak, "Lets see if I can find them" },
    /* 13 */ { kMerlin, Act::Play, "Search" },
    /* 14 */ { kMerlin, Act::Speak, "They're having a nap again!" },
    /* 15 */ { kMerlin, Act::Play, "think" },
    /* 16 */ { kMerlin, Act::Speak, "Got an idea!" },
    /* 17 */ { kMerlin, Act::Play, "Suggest" },
    /* 18 */ { kMerlin, Act::Speak, "We can play a little trick on them, I'll use magic to bring them out here without them knowing" },
    /* 19 */ { kMerlin, Act::Speak, "abracadabra hokus pokus! Bring the sleepers into focus!" },
    /* 20 */ { kMerlin, Act::Play, "DoMagic2", Wait::Skippable },
    /* 21 */ { kGenie, Act::Show, nullptr, Wait::Skippable },
    /* 22 */ { kGenie, Act::Play, "idle3_2" },
    /* 23 */ { kPeedy, Act::MoveTo, nullptr, Wait::None, 150, 100 },
    /* 24 */ { kPeedy, Act::Show, nullptr },
    /* 25 */ { kPeedy, Act::Play, "idle3_2" },
    /* 26 */ { kMerlin, Act::Speak, "There they are!, the sleeping boobies, uh I mean, sleeping beauties" },
    /* 27 */ { kMerlin, Act::Speak, "Do you like naps?, Genie and Peedy sure do." },
    /* 28 */ { kMerlin, Act::Speak, "I think it's time we woke them up" },
    /* 29 */ { kMerlin, Act::MoveTo, nullptr, Wait::None, 400, 200 },
    /* 30 */ { kMerlin, Act::Play, "Announce", Wait::Skippable },
    /* 31 */ { kGenie, Act::Stop, nullptr },
    /* 32 */ { kPeedy, Act::Stop, nullptr },
    /* 33 */ { kGenie, Act::Play, "Surprised" },
    /* 34 */ { kGenie, Act::Play, "Decline" },
    /* 35 */ { kPeedy, Act::Play, "Surprised" },
    /* 36 */ { kGenie, Act::Play, "Lookleft" },
    /* 37 */ { kPeedy, Act::Play, "Confused" },
    /* 38 */ { kGenie, Act::Play, "Confused", Wait::Skippable, 0, 0, { 33, 35 } },
    /* 39 */ { kPeedy, Act::Speak, "What was that terrible noise!" },
    /* 40 */ { kMerlin, Act::Play, "Pleased", Wait::Skippable, 0, 0, { 39 } },
    /* 41 */ { kPeedy, Act::Speak, "I must be dreaming, I just dreamed I heard a nasty blue wizard blowing on a trumpet!" },
    /* 42 */ { kMerlin, Act::Play, "Decline", Wait::Skippable, 0, 0, { 41 } },
    /* 43 */ { kGenie, Act::Play, "Uncertain" },
    /* 44 */ { kGenie, Act::Speak, "Me Too!, it was a nightmare, big nasty blue wizard woke me up", Wait::Plain },
    /* 45 */ { kGenie, Act::Play, "Sad", Wait::Skippable },
    /* 46 */ { kPeedy, Act::Play, "LookLeft" },
    /* 47 */ { kPeedy, Act::Speak, "It was you wasn't it Merlin, I should have known", Wait::Skippable },
    /* 48 */ { kMerlin, Act::Speak, "Sorry Peedy, it Was me, but we have a player here!" },
    /* 49 */ { kMerlin, Act::Play, "Pleased", Wait::Skippable },
    /* 50 */ { kPeedy, Act::Play, "Pleased", Wait::Plain },
    /* 51 */ { kGenie, Act::Play, "Pleased" },
    /* 52 */ { kPeedy, Act::Speak, "Well! that's different, I am always ready to play the game, hello to all the players", Wait::Skippable },
    /* 53 */ { kPeedy, Act::Play, "gestureleft" },
    /* 54 */ { kPeedy, Act::Speak, "Lets start the game right away", Wait::Skippable },
    /* 55 */ { kGenie, Act::Play, "Getattention" },
    /* 56 */ { kGenie, Act::Speak, "No wait!, I can't appear before my players without going to the makeup department first, wait a moment", Wait::Skippable },
    /* 57 */ { kGenie, Act::Play, "Process", Wait::Skippable },
    /* 58 */ { kGenie, Act::Play, "Explain" },
    /* 59 */ { kGenie, Act::Speak, "All done, that didn't take long did it", Wait::Skippable },
    /* 60 */ { kPeedy, Act::Play, "Lookright" },
    /* 61 */ { kPeedy, Act::Speak, "Your still very blue Genie, If you came back green, that would be worth the wait, but your still very blue, Lets play the Game!", Wait::Skippable },
    /* 62 */ { kGenie, Act::Speak, "A Genie is never green, besides, blue is cool!", Wait::Plain },
    /* 63 */ { kMerlin, Act::Speak, " When your ready just press the play button" },
    /* -- */ { kMerlin, Act::MarkMenuShown, nullptr },
    /* 64 */ { kMerlin, Act::Play, "Uncertain" },
    /* 65 */ { kMerlin, Act::Play, "Idle2_1" },
    /* 66 */ { kMerlin, Act::Play, "Getattention" },
    /* 67 */ { kMerlin, Act::Speak, "Come on ! Lets get the show on the road, Press the Play button .", Wait::Skippable },
    /* 68 */ { kGenie, Act::Play, "GestureLeft" },
    /* 69 */ { kMerlin, Act::Speak, "Genie, some directions for our player please", Wait::Skippable },
    /* 70 */ { kGenie, Act::Play, "GestureLeft" },
    /* 71 */ { kGenie, Act::Speak, "Here are the game play buttons. To play Spelling Press. Play Spelling!. " },
    /* 72 */ { kGenie, Act::Play, "Alert" },
    /* 73 */ { kGenie, Act::Speak, "To play a Quiz, press. You guessed it. Play a Quiz!!. Go ahead Press a button." },
};

constexpr Step kIntroTwo[] = {
    /*  1 */ { kMerlin, Act::Show, nullptr },
    /*  2 */ { kMerlin, Act::Play, "Greet" },
    /*  3 */ { kMerlin, Act::Speak, "Hello there, it's Merlin here", Wait::Sound },
    /*  4 */ { kMerlin, Act::Play, "Explain" },
    /*  5 */ { kMerlin, Act::Speak, "Are you ready to have fun becoming a great speller?" },
    /*  6 */ { kMerlin, Act::Play, "alert" },
    /*  7 */ { kMerlin, Act::Speak, "Or maybe you want to play a quiz ?. You can learn just about anything with a quiz." },
    /*  8 */ { kMerlin, Act::Speak, "And its a lot a fun!" },
    /*  9 */ { kMerlin, Act::Play, "Pleased" },
    /* 10 */ { kMerlin, Act::Speak, "With a little magic and a lot of  fun, you can learn faster and its easier to remember what you learn" },
    /* 11 */ { kMerlin, Act::MoveTo, nullptr, Wait::Skippable, 100, kStageLine },
    /* 12 */ { kMerlin, Act::Play, "Announce", Wait::Skippable },
    /* 13 */ { kMerlin, Act::Speak, "Let me introduce my friends, Genie and Peedy", Wait::Skippable },
    /* 14 */ { kGenie, Act::Show, nullptr },
    /* 15 */ { kGenie, Act::Play, "LookDown" },
    /* 16 */ { kGenie, Act::Speak, "Hello Merlin", Wait::Plain },
    /* 17 */ { kMerlin, Act::Play, "LookUp" },
    /* 18 */ { kMerlin, Act::Speak, "Hello Genie", Wait::Skippable },
    /* 19 */ { kPeedy, Act::MoveTo, nullptr, Wait::None, 100, kStageLine },
    /* 20 */ { kPeedy, Act::Show, nullptr, Wait::Plain },
    /* 21 */ { kMerlin, Act::Play, "Surprised" },
    /* 22 */ { kPeedy, Act::Play, "Surprised" },
    /* 23 */ { kPeedy, Act::Speak, "What was that!", Wait::Skippable },
    /* 24 */ { kMerlin, Act::Play, "Wave" },
    /* 25 */ { kMerlin, Act::Speak, "It's me Peedy. you are standing on my foot", Wait::Skippable },
    /* 26 */ { kPeedy, Act::MoveTo, nullptr, Wait::None, 250, kStageLine },
    /* 27 */ { kMerlin, Act::Play, "Gesturedown" },
    /* 28 */ { kPeedy, Act::Play, "Lookright" },
    /* 29 */ { kPeedy, Act::Speak, "Sorry Merlin, I didn't see you there", Wait::Plain },
    /* 30 */ { kMerlin, Act::Play, "Lookleft" },
    /* 31 */ { kMerlin, Act::Speak, "That's alright Peedy, I have another one", Wait::Skippable },
    /* 32 */ { kGenie, Act::Play, "Gesturedown" },
    /* 33 */ { kGenie, Act::Speak, "Hey are there any players here yet?", Wait::Skippable },
    /* 34 */ { kPeedy, Act::Speak, "Good Question", Wait::Plain },
    /* 35 */ { kMerlin, Act::Play, "Explain" },
    /* 36 */ { kMerlin, Act::Speak, "Sure there are, look out there", Wait::Plain },
    /* 37 */ { kMerlin, Act::Play, "Gestureleft" },
    /* 38 */ { kGenie, Act::Play, "Uncertain" },
    /* 39 */ { kGenie, Act::Speak, "Oh yes, I see them", Wait::Plain },
    /* 40 */ { kMerlin, Act::Play, "Wave" },
    /* 41 */ { kPeedy, Act::Play, "Alert" },
    /* 42 */ { kPeedy, Act::Speak, "That's a really cute one isn't it", Wait::Skippable },
    /* 43 */ { kPeedy, Act::Play, "Pleased" },
    /* 44 */ { kGenie, Act::MoveToCorner, nullptr, Wait::Plain, 150, 200 },
    /* 45 */ { kGenie, Act::Play, "Suggest" },
    /* 46 */ { kGenie, Act::Speak, "I have a great Idea, lets give the player the triple wammy", Wait::Skippable },
    /* 47 */ { kPeedy, Act::Play, "Alert" },
    /* 48 */ { kMerlin, Act::Play, "Alert" },
    /* 49 */ { kMerlin, Act::Speak, "That is a good idea Genie", Wait::Plain },
    /* 50 */ { kPeedy, Act::Speak, "I love doing the triple wammy, particularly for such a cute player", Wait::Plain },
    /* 51 */ { kGenie, Act::Play, "Explain" },
    /* 52 */ { kGenie, Act::Speak, "Lets do it Merlin", Wait::Skippable },
    /* 53 */ { kMerlin, Act::Play, "Explain" },
    /* 54 */ { kMerlin, Act::Speak, "OK players brace yourself for the famous triple wammy", Wait::Skippable },
    /* 55 */ { kMerlin, Act::Play, "Pleased" },
    /* 56 */ { kMerlin, Act::Speak, "Eye of newt and piles of soft indescribably awfull smelly spell stuff.  This Triple Wammy is for you, let all the players brains be like two!", Wait::Plain },
    /* 57 */ { kMerlin, Act::Play, "Domagic1", Wait::Skippable },
    /* 58 */ { kGenie, Act::Play, "Domagic2", Wait::Plain },
    /* 59 */ { kPeedy, Act::Play, "Domagic1", Wait::Skippable },
    /* 60 */ { kGenie, Act::Speak, "Now your brain is twice as powerful", Wait::Skippable },
    /* 61 */ { kGenie, Act::Play, "Pleased" },
    /* 62 */ { kGenie, Act::Speak, "Now see how you go with your big brain in the test, see you at the game", Wait::Plain },
    /* 63 */ { kGenie, Act::Hide, nullptr, Wait::Skippable },
    /* 64 */ { kMerlin, Act::Speak, "When your ready just press the play button to start the game", Wait::Plain },
    /* 65 */ { kMerlin, Act::Speak, "See you in the game", Wait::Skippable },
    /* 66 */ { kGenie, Act::Hide, nullptr },
    /* 67 */ { kPeedy, Act::Speak, "Have a great game", Wait::Skippable },
    /* 68 */ { kPeedy, Act::Hide, nullptr },
};
// clang-format on

class Script {
public:
    explicit Script(frmMenu1 &menu) : m_menu(menu) {}

    template <std::size_t Count>
    void Run(const Step (&steps)[Count])
    {
        for (const Step &step : steps) {
            if (step.act == Act::MarkMenuShown) {
                State().MenuShown = true;
                continue; // it has no number
            }
            m_requests.push_back(Ask(step));
            if (!WaitBehind(step))
                return;
        }
    }

private:
    platform::RequestReference Ask(const Step &step)
    {
        const platform::CharacterReference &character = State().Characters[step.who];
        const QString text = QString::fromUtf8(step.text);
        switch (step.act) {
        case Act::Show:
            return character->Show();
        case Act::Hide:
            return character->Hide();
        case Act::Stop:
            character->Stop();
            return nullptr;
        case Act::Play:
            return character->Play(text);
        case Act::Speak:
            return character->Speak(text);
        case Act::MoveTo:
            return character->MoveTo(step.x, step.y == kStageLine ? int(m_menu.IntroStartY) : step.y);
        case Act::MoveToCorner:
            // Half the twips of a pixel, which puts him into the corner: wanted.
            if (State().DisplayWidth == 800)
                return character->MoveTo(platform::kTwipsPerPixel / 2, platform::kTwipsPerPixel / 2);
            return character->MoveTo(step.x, step.y);
        case Act::MarkMenuShown:
            break;
        }
        return nullptr;
    }

    // False when the script has to be left at once.
    bool WaitBehind(const Step &step)
    {
        const platform::RequestReference &first =
            step.waitsOn[0] ? RequestOf(step.waitsOn[0]) : m_requests.back();
        const platform::RequestReference &second = step.waitsOn[1] ? RequestOf(step.waitsOn[1]) : first;
        switch (step.wait) {
        case Wait::None:
            break;
        case Wait::Sound:
            return WaitRequestSound(first, m_menu);
        case Wait::Plain:
            WaitRequest(first);
            break;
        case Wait::Skippable:
            WaitRequestsSkippable({ &first, &second }, m_menu.IntroCancelled);
            break;
        }
        return true;
    }

    const platform::RequestReference &RequestOf(int step) const
    {
        return m_requests[static_cast<std::size_t>(step - 1)];
    }

    frmMenu1 &m_menu;
    std::vector<platform::RequestReference> m_requests; // of the steps so far, by their numbers
};

template <std::size_t Count>
void Perform(const Step (&steps)[Count], frmMenu1 &menu)
{
    try {
        Script(menu).Run(steps);
    } catch (const platform::Error &) {
        // Whatever is wrong, the comedy just ends.
    }
}

} // namespace

void IntroOneScript(frmMenu1 &menu)
{
    Perform(kIntroOne, menu);
}

void IntroTwoScript(frmMenu1 &menu)
{
    Perform(kIntroTwo, menu);
}

} // namespace tumblewick
