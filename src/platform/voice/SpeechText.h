#pragma once

#include <QString>

#include <vector>

namespace platform {

// One piece of a line that appears in the balloon in one go: a plain word, or what a map tag shows.
struct SpeechUnit {
    QString spoken;      // what the voice says; may be several words, or empty
    QString shown;       // what the balloon shows; may be empty
    bool joined = false; // shown without a blank after the unit before it
    int pause = 0;       // milliseconds of silence before it
    bool stressed = false;
    bool mapped = false; // it stood in a map tag

    friend bool operator==(const SpeechUnit &, const SpeechUnit &) = default;
};

// A line for Speak with its tags taken out.
//
//   \map="say"="show"\   say one text and show the other; one unit
//   \pau=ms\  \emp\      a pause; stress on the word that follows
//   \\                   one backslash
//   any other \name\ or \name=value\   taken out and ignored
//
// Tag names are of any letter case. Text that only looks like a tag stays as it is, so that a backslash in a
// name never swallows what follows. A map tag without end says and shows nothing. Punctuation that stands
// right behind a map tag belongs to its unit: it is said and shown with it.
struct SpeechText {
    std::vector<SpeechUnit> units;

    static SpeechText Parse(const QString &tagged);
    QString Spoken() const; // the units' spoken texts, separated by blanks
    QString Shown() const;  // as the balloon shows it when all has been said
};

// Whether `tagged` is the tag that asks for the last line once more, `\lst\` in any letter case, with nothing
// but blanks round it. Within other text that tag is taken out like any other, so that no child's name makes
// a line fail.
bool IsRepeatTag(const QString &tagged);

} // namespace platform
