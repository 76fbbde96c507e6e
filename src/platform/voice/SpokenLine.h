#pragma once

#include "platform/voice/PhraseVoice.h"
#include "platform/voice/SpokenWords.h"
#include "platform/voice/Voice.h"

#include <atomic>
#include <memory>

namespace platform {

// Makes a whole line with one voice: phrase by phrase, with the pauses between them, then level, tone and
// times. Null when `cancelled` is set on the way. A line without anything to say gives an utterance without
// sound. Of a line that nobody would listen to the end, only the first minute and a half is made. May be
// called on any thread.
std::shared_ptr<const Utterance> MakeLine(const SpeechText &text, const VoiceSettings &settings,
                                          const PhraseVoice &voice, const std::atomic<bool> &cancelled);

// `first` and `second`, one behind the other with a short pause; the units of both in order. Either may have
// no sound.
std::shared_ptr<const Utterance> Joined(const Utterance &first, const Utterance &second);

} // namespace platform
