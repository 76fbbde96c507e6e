#include "platform/voice/FliteVoice.h"

#include <csetjmp>
#include <mutex>

extern "C" {
#include <flite/cst_cg.h>
#include <flite/cst_error.h>
#include <flite/flite.h>

cst_voice *register_cmu_us_awb(const char *folder);
cst_voice *register_cmu_us_rms(const char *folder);
cst_voice *register_cmu_us_slt(const char *folder);
}

namespace platform {

namespace {

// A word that is stressed takes this much longer.
constexpr float kStressStretch = 1.25F;

std::mutex &LibraryLock()
{
    static std::mutex lock;
    return lock;
}

// Synthesises the tokens of `utterance`. The library ends the process on an error unless it is given a place
// to jump to; nothing with a destructor may live in here. False when it failed: then `utterance` must not be
// used any more.
bool SynthesiseTokens(cst_utterance *utterance)
{
    static std::jmp_buf onError;
    jmp_buf *const before = cst_errjmp;
    cst_errjmp = &onError;
    if (setjmp(onError) != 0) {
        cst_errjmp = before;
        return false;
    }
    utt_synth_tokens(utterance);
    cst_errjmp = before;
    return true;
}

SaidWord ReadWord(const cst_item *token)
{
    SaidWord said;
    bool found = false;
    for (const cst_item *word = item_daughter(token); word; word = item_next(word)) {
        const cst_item *structure = item_as(word, "SylStructure");
        const cst_item *syllable = structure ? item_daughter(structure) : nullptr;
        for (; syllable; syllable = item_next(syllable)) {
            if (const cst_item *accent = item_as(syllable, "Syllable"))
                said.accented = said.accented || !cst_streq(ffeature_string(accent, "accent"), "0");
            for (const cst_item *part = item_daughter(syllable); part; part = item_next(part)) {
                const cst_item *segment = item_as(part, "Segment");
                if (!segment)
                    continue;
                if (!found)
                    said.begins = static_cast<double>(ffeature_float(segment, "p.end"));
                found = true;
                said.ends = static_cast<double>(item_feat_float(segment, "end"));
            }
        }
    }
    return said;
}

SaidPhrase ReadPhrase(cst_utterance *utterance)
{
    SaidPhrase phrase;
    const cst_wave *wave = utt_wave(utterance);
    phrase.samples.reserve(static_cast<std::size_t>(wave->num_samples));
    for (int index = 0; index < wave->num_samples; ++index)
        phrase.samples.push_back(static_cast<float>(wave->samples[index]) / 32768.0F);
    double begins = 0;
    for (const cst_item *segment = relation_head(utt_relation(utterance, "Segment")); segment;
         segment = item_next(segment)) {
        const auto ends = static_cast<double>(item_feat_float(segment, "end"));
        phrase.sounds.push_back({ begins, ends, item_feat_string(segment, "name") });
        begins = ends;
    }
    double at = 0;
    for (const cst_item *token = relation_head(utt_relation(utterance, "Token")); token;
         token = item_next(token)) {
        auto word = ReadWord(token);
        if (word.ends <= word.begins)
            word.begins = word.ends = at;
        at = word.ends;
        phrase.words.push_back(word);
    }
    return phrase;
}

} // namespace

const FliteVoice *FliteVoice::Find(const QString &name)
{
    struct Voices {
        bool started = flite_init() >= 0;
        FliteVoice awb{ register_cmu_us_awb(nullptr) };
        FliteVoice rms{ register_cmu_us_rms(nullptr) };
        FliteVoice slt{ register_cmu_us_slt(nullptr) };
    };
    static const Voices voices;
    if (!voices.started)
        return nullptr;
    if (name == QStringLiteral("cmu_us_awb"))
        return &voices.awb;
    if (name == QStringLiteral("cmu_us_rms"))
        return &voices.rms;
    if (name == QStringLiteral("cmu_us_slt"))
        return &voices.slt;
    return nullptr;
}

SaidPhrase FliteVoice::Say(std::span<const SpokenWord> words, double stretch, double pitch) const
{
    const std::scoped_lock lock(LibraryLock());
    cst_utterance *utterance = new_utterance();
    utt_init(utterance, static_cast<cst_voice *>(m_voice));
    feat_set_float(utterance->features, "duration_stretch", static_cast<float>(stretch));
    feat_set_float(utterance->features, "f0_shift", static_cast<float>(pitch));
    cst_relation *tokens = utt_relation_create(utterance, "Token");
    for (std::size_t index = 0; index < words.size(); ++index) {
        const auto &word = words[index];
        cst_item *token = relation_append(tokens, nullptr);
        item_set_string(token, "name", word.text.constData());
        item_set_string(token, "whitespace", " ");
        item_set_string(token, "prepunctuation", "");
        item_set_string(token, "punc", word.punctuation.constData());
        item_set_int(token, "file_pos", 0);
        item_set_int(token, "line_number", 0);
        if (!word.phones.isEmpty()) {
            // Of neighbours with the same phones the library says only the first, and the second t of a
            // spelled letter would be lost; a blank makes them differ.
            const auto phones = index % 2 == 0 ? word.phones : ' ' + word.phones;
            item_set_string(token, "phones", phones.constData());
        }
        if (word.stressed)
            item_set_float(token, "local_duration_stretch", kStressStretch);
    }
    if (!SynthesiseTokens(utterance))
        return {};
    auto phrase = utt_wave(utterance) ? ReadPhrase(utterance) : SaidPhrase();
    delete_utterance(utterance);
    return phrase;
}

} // namespace platform
