#pragma once

#include "platform/voice/Voice.h"
#include "platform/voice/VoiceOptions.h"

#include <QPoint>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

// What the user has chosen on the property sheet. It stands over everything that clients and characters ask
// for, holds for all runs of one user, and takes effect at once when it is changed.
namespace platform {

// How the user wants one character to sound.
struct CharacterVoice {
    QString voice; // the engine's name of the voice; empty for the character's own
    int pitch = 0; // steps up or down from the voice's own pitch

    friend bool operator==(const CharacterVoice &, const CharacterVoice &) = default;
};

struct ServiceOptions {
    static constexpr int kSmallestText = 16; // units; nothing smaller is read by children
    static constexpr int kLargestText = 32;
    static constexpr int kUsualText = 20;
    static constexpr int kMostRate = 5;  // the speaking rate goes from -kMostRate, slow, to kMostRate, fast
    static constexpr int kMostPitch = 5; // likewise

    bool balloons = true;
    int balloonTextSize = kUsualText;
    bool voice = true;
    int speakingRate = 0;
    bool soundEffects = true;
    std::map<QString, CharacterVoice> characters; // by name; one that sounds as it was made is left out
    QString readingVoice; // in which the words of lists are read; empty for the characters' own
    bool voiceSpelling = false;
    QString microphone; // the device's own id; empty for the one that the desktop has chosen

    // How that character sounds now. Any name is good.
    CharacterVoice VoiceOf(const QString &character) const;
    void SetVoiceOf(const QString &character, const CharacterVoice &voice);
    // Brings every number into its range.
    void Limit();

    friend bool operator==(const ServiceOptions &, const ServiceOptions &) = default;
};

// The settings of a character that speaks with the voice the user has chosen for it. Rate and pitch are not
// among them: those the voices add themselves, see ApplyVoices.
VoiceSettings WithVoice(const VoiceSettings &own, const CharacterVoice &chosen);

// How many times faster than usual a speaking rate is.
double RateFactor(int speakingRate);

// Makes reading voice, rate and pitches hold for what is ordered from now on. `characters` names those that
// had a choice before, so that they sound as they were made when they have none any more.
void ApplyVoices(const ServiceOptions &options, const QStringList &characters, VoiceOptions &voices);

// Where the user last had the property sheet.
struct SheetPlace {
    QString page;                // "Speech", "Output" or "Copyright"
    std::optional<QPoint> place; // null before it was first shown

    friend bool operator==(const SheetPlace &, const SheetPlace &) = default;
};

// Where options are kept from run to run. Neither reading nor writing raises an error: what cannot be read is
// as it is by default, what cannot be written is lost at the end of the run; either is told in the log, once.
class OptionsStore {
public:
    virtual ~OptionsStore() = default;
    virtual ServiceOptions ReadOptions() = 0;
    virtual void WriteOptions(const ServiceOptions &options) = 0;
    virtual SheetPlace ReadSheetPlace() = 0;
    virtual void WriteSheetPlace(const SheetPlace &place) = 0;
};

// The one owner of the options in force.
class OptionsKeeper {
public:
    // Reads the options. The store has to outlive the keeper.
    explicit OptionsKeeper(OptionsStore &store);

    const ServiceOptions &Now() const { return m_options; }
    // Makes `options` hold, keeps them, and tells the observers, in the order in which they came, before it
    // returns. Options that are as before tell nobody.
    void Set(ServiceOptions options);

    // Calls `changed` after each change as long as the result lives. Observers may come and go while
    // observers are told.
    [[nodiscard]] std::shared_ptr<void> Observe(std::function<void()> changed);

    OptionsStore &Store() { return m_store; }

private:
    OptionsStore &m_store;
    ServiceOptions m_options;
    std::vector<std::weak_ptr<std::function<void()>>> m_observers;
};

} // namespace platform
