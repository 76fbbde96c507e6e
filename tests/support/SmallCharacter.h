#pragma once

#include "platform/agent/CharacterFile.h"
#include "platform/agent/Ticker.h"
#include "support/FakeTime.h"

#include <memory>

namespace support {

// A character of a few parts with motions of every kind, for tests that know each number of it.
//
// Parts: figure, body, head (with the hat tip as a spring), arm with the variants rest and open, lids with
// open and shut, mouth with one variant for each shape, and the hidden prop. Motions: Show, Hide, RestPose,
// Wave (blend), Nod (ends at rest), Read and ReadContinued with ReadReturn, Doze (a loop), MoveLeft and its
// like (aloft), Blink.
platform::CharacterSource SmallCharacterSource(const QString &name = QStringLiteral("Merlin"));
std::shared_ptr<const platform::CharacterData> SmallCharacter();

// Puts the packed file `<name>.acs` into the folder.
void WriteSmallCharacter(const QString &folder, const QString &name);

// Ticks with FakeTime.
class FakeTicker : public platform::Ticker {
public:
    explicit FakeTicker(FakeTime &time) : m_time(time) {}
    void SetRate(int callsPerSecond) override;
    double Now() const override { return double(m_time.Elapsed().count()) / 1000; }
    int Rate() const { return m_rate; }

private:
    void Await();

    FakeTime &m_time;
    int m_rate = 0;
    std::unique_ptr<platform::PendingCall> m_next;
};

} // namespace support
