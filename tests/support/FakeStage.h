#pragma once

#include "platform/agent/Figure.h"
#include "platform/system/Events.h"

#include <QStringList>

#include <map>
#include <set>
#include <vector>

namespace support {

class FakeFigure;

// Figures for tests: they take the time that the real ones roughly take, in FakeTime, and write down what
// they do.
class FakeStage : public platform::FigureMaker {
public:
    explicit FakeStage(platform::Events &events);
    ~FakeStage() override;

    std::unique_ptr<platform::Figure> Make(const QString &id, const QString &file) override;

    // How long things take.
    std::chrono::milliseconds motionTime{ 1000 };
    std::chrono::milliseconds timePerLetter{ 60 };

    // The next activity of that kind ("Perform", "Slide", "Speak") of that character fails with `number`.
    void FailNext(const QString &id, const QString &kind, qint32 number);
    // Every Speak fails with `number` from now on; 0 makes them work again.
    void SetSpeechFailure(qint32 number) { m_speechFailure = number; }
    // Make raises `number` for that file; 0 makes it work again.
    void SetFileFailure(const QString &file, qint32 number) { m_fileFailures[file] = number; }

    // The figures have no motion of that name from now on.
    void TakeMotionAway(const QString &name) { m_without << name.toLower(); }

    // What all figures did, in order: `Merlin appears`, `Merlin performs "Wave"`, `Merlin slides to 1,2`,
    // `Merlin says "…" showing "…"`, `Merlin says "…" without balloon`, `Merlin halts`, `Merlin rests`,
    // `Merlin hides the balloon`, `Merlin disappears`.
    const QStringList &Log() const { return m_log; }
    void ClearLog() { m_log.clear(); }

    // The living figure of that character that was made last; null when there is none.
    FakeFigure *Of(const QString &id) const;
    // How many are talking, and how many are visible.
    int Talking() const;
    int Seen() const;

private:
    friend class FakeFigure;
    qint32 TakeFailure(const QString &id, const QString &kind);

    platform::Events &m_events;
    QStringList m_log;
    std::map<QString, qint32> m_failures;
    std::map<QString, qint32> m_fileFailures;
    qint32 m_speechFailure = 0;
    QStringList m_without;
    std::vector<FakeFigure *> m_figures;
};

class FakeFigure : public platform::Figure {
public:
    FakeFigure(FakeStage &stage, QString id);
    ~FakeFigure() override;

    bool HasMotion(const QString &name) const override;
    QRect Frame() const override { return m_frame; }
    void SetFrame(const QRect &frame) override { m_frame = frame; }
    void Appear() override;
    void Disappear(bool byUser) override;
    void Perform(const QString &name, Done done) override;
    void Slide(const QPoint &topLeft, std::chrono::milliseconds duration, Done done) override;
    void Speak(const platform::SpeechText &text, bool balloon, Done done) override;
    void Halt() override;
    void Rest() override;
    void HideBalloon() override;
    bool BalloonVisible() const override { return m_balloon; }

    bool Visible() const { return m_visible; }
    bool Busy() const { return m_pending != nullptr; }

private:
    friend class FakeStage;
    void Write(const QString &what);
    void EndAfter(std::chrono::milliseconds time, qint32 number, Done done,
                  std::function<void()> effect = {});

    FakeStage &m_stage;
    const QString m_id;
    QRect m_frame{ 0, 0, 128, 128 };
    bool m_visible = false;
    bool m_balloon = false;
    bool m_talks = false;
    std::unique_ptr<platform::PendingCall> m_pending;
};

} // namespace support
