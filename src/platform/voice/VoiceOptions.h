#pragma once

#include <QString>

#include <vector>

namespace platform {

// One way in which the words of lists can be read.
struct VoiceChoice {
    QString id;   // what SetReadingVoice takes; stays the same from run to run, so it can be kept in a file
    QString name; // for the user, in English: "English (recorded voices)", "French (France)"
    QString language; // a language tag such as "en", "fr-fr"

    friend bool operator==(const VoiceChoice &, const VoiceChoice &) = default;
};

// The default comes first, the others by name. Never empty.
using VoiceChoices = std::vector<VoiceChoice>;

// What the user may choose about the voices of all characters. All of it may be called at any time from the
// program's one thread, costs nothing to speak of, raises nothing, and holds for every line that is ordered
// afterwards; a line already ordered or heard stays as it is. Nothing is kept from run to run: whoever shows
// the choice to the user keeps it and sets it at the next start.
class VoiceOptions {
public:
    virtual ~VoiceOptions() = default;

    // Everything the machine can read lists with. The first call may take some ten milliseconds.
    virtual VoiceChoices Available() const = 0;

    // Chooses the voice for what stands in map tags, which is where the words of lists and their letters are;
    // the lines round them are the game's own and stay English. An empty id, the default, is the characters'
    // own English voice. False, with nothing changed, for an id that Available does not hold.
    virtual bool SetReadingVoice(const QString &id) = 0;
    virtual QString ReadingVoice() const = 0; // the id; that of the default is given in full

    // Makes everything that the character says faster (above 1) or slower, and higher or lower, on top of
    // what the character itself brings. The character is named as in its file, in any letter case; an empty
    // name is everybody, and both factors hold. Rate is kept within 0.5 to 2, pitch within 0.6 to 1.7; what
    // is no number counts as 1.
    virtual void SetRate(const QString &character, double factor) = 0;
    virtual void SetPitch(const QString &character, double factor) = 0;
    virtual double Rate(const QString &character) const = 0; // as set for that name; 1 at first
    virtual double Pitch(const QString &character) const = 0;
};

} // namespace platform
