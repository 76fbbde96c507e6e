#pragma once

#include "platform/system/Clock.h"
#include "platform/voice/SoundEffects.h"
#include "support/FakeTime.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace support {

// Effects that nobody hears; they only take their time.
class FakeSounds : public platform::SoundEffects {
public:
    using milliseconds = std::chrono::milliseconds;
    static constexpr milliseconds kFade{ 30 };

    struct Heard {
        std::shared_ptr<const platform::Sound> sound;
        milliseconds from; // of the fake time
        milliseconds to;
        bool faded = false; // before its end
    };

    explicit FakeSounds(const FakeTime &time) : m_time(time) {}

    void SetUsable(bool usable) { m_usable = usable; }
    // A device that takes effects and never tells of their end.
    void SetStuck() { m_stuck = true; }
    // Everything that began, in the order of the calls.
    std::vector<Heard> All() const
    {
        std::vector<Heard> all;
        for (const auto &heard : m_heard)
            all.push_back(*heard);
        return all;
    }
    // How many sound at this moment.
    int Sounding() const
    {
        int sounding = 0;
        for (const auto &heard : m_heard)
            sounding += heard->from <= m_time.Elapsed() && m_time.Elapsed() < heard->to;
        return sounding;
    }

    // How many are kept by whoever asked for them.
    int Kept() const
    {
        return int(std::count_if(m_heard.begin(), m_heard.end(),
                                 [](const auto &heard) { return heard.use_count() > 1; }));
    }

    [[nodiscard]] std::unique_ptr<Playing> Play(std::shared_ptr<const platform::Sound> sound,
                                                std::chrono::microseconds delay) override
    {
        if (!m_usable || !m_on)
            return nullptr;
        const auto from = m_time.Elapsed() + std::chrono::duration_cast<milliseconds>(delay);
        const auto length = std::chrono::duration_cast<milliseconds>(sound->Length());
        m_heard.push_back(std::make_shared<Heard>(Heard{ sound, from, from + length }));
        return std::make_unique<Effect>(*this, m_heard.back());
    }
    void SetOn(bool on) override
    {
        m_on = on;
        if (!on) {
            for (const auto &heard : m_heard)
                Fade(*heard);
        }
    }

private:
    class Effect : public Playing {
    public:
        Effect(FakeSounds &owner, std::shared_ptr<Heard> heard) : m_owner(owner), m_heard(std::move(heard)) {}
        ~Effect() override { m_owner.Fade(*m_heard); }
        bool IsOver() const override { return !m_owner.m_stuck && m_owner.m_time.Elapsed() >= m_heard->to; }
        void FadeOut() override { m_owner.Fade(*m_heard); }

    private:
        FakeSounds &m_owner;
        const std::shared_ptr<Heard> m_heard;
    };
    void Fade(Heard &heard) const
    {
        const auto now = m_time.Elapsed();
        const auto end = heard.from >= now ? heard.from : now + kFade;
        if (end < heard.to) {
            heard.to = end;
            heard.faded = true;
        }
    }

    const FakeTime &m_time;
    bool m_usable = true;
    bool m_stuck = false;
    bool m_on = true;
    std::vector<std::shared_ptr<Heard>> m_heard;
};

} // namespace support
