#pragma once

#include "platform/agent/CharacterWindow.h"
#include "platform/agent/Figure.h"
#include "platform/agent/FigureEffects.h"
#include "platform/agent/FigureSpeech.h"
#include "platform/agent/FigureTray.h"
#include "platform/agent/IdleLife.h"
#include "platform/agent/MotionPlayer.h"
#include "platform/agent/Puppet.h"
#include "platform/agent/Ticker.h"

#include <deque>

namespace platform {

// A figure drawn from its character file, in a window of its own. See Figure for what it does.
class PuppetFigure final : public Figure {
public:
    PuppetFigure(std::shared_ptr<const CharacterData> character, SpeechEngine &engine, AudioOut &audio,
                 Events &events, OptionsKeeper &options, std::unique_ptr<Ticker> ticker, std::uint32_t seed,
                 SoundEffects *effects = nullptr);
    ~PuppetFigure() override;

    bool HasMotion(const QString &name) const override { return m_character->FindMotion(name) != nullptr; }
    QRect Frame() const override { return m_frame; }
    void SetFrame(const QRect &frame) override;
    void Appear() override;
    void Disappear(bool byUser) override;
    void Perform(const QString &name, Done done) override;
    void Slide(const QPoint &topLeft, std::chrono::milliseconds duration, Done done) override;
    void Speak(const SpeechText &text, bool balloon, Done done) override;
    void Halt() override;
    void Rest() override;
    void HideBalloon() override { m_speech.HideBalloon(); }
    bool BalloonVisible() const override { return m_speech.BalloonVisible(); }

    // Brings a figure back that is seen on no screen any more, because one has gone or become smaller.
    // Nothing else does: where the program puts a figure, there it stands.
    void ReturnToScreens();

    // What moves the body, and what it looks like, for measurements and tests.
    const MotionPlayer &Player() const { return m_player; }
    const QImage &Picture() const { return m_puppet.Image(); }
    CharacterWindow &Window() { return m_window; }
    FigureTray *Tray() { return m_tray.get(); } // null unless the user has hidden the figure

private:
    // An activity, or what the figure does by itself, is a row of steps.
    struct Step {
        enum class Kind { Settle, Play, Wait, Slide, Hush, Talk } kind;
        const Motion *motion = nullptr;
    };

    void BeginActivity(Done done);
    void FinishActivity(qint32 number);
    std::deque<Step> ComeBack(const Motion *next, bool forSpeech) const;
    void BeginSteps(std::deque<Step> steps);
    void BeginStep();
    bool StepHasEnded();
    void Tick();
    void PassTime();
    void LiveOn(double seconds);
    bool IsSliding() const { return !m_steps.empty() && m_steps.front().kind == Step::Kind::Slide; }
    void SlideOn();
    void MoveFrame(const QPoint &topLeft, double carry);
    void FollowWithBalloon();
    QRect Face() const { return ToScreen(m_character->face); }
    void FitPicture();
    void Draw();
    void ChooseRate();
    QRect ToScreen(const QRectF &area) const;
    void PostDragged(bool begins);
    void PostHideAsked(bool hide);
    void WatchScreens();

    const std::shared_ptr<int> m_alive = std::make_shared<int>();
    const std::shared_ptr<const CharacterData> m_character;
    Events &m_events;
    const std::unique_ptr<Ticker> m_ticker;
    MotionPlayer m_player;
    Puppet m_puppet;
    IdleLife m_idle;
    FigureSpeech m_speech;
    FigureEffects m_effects;
    CharacterWindow m_window;
    QRect m_frame;
    QRectF m_seenAtRest; // in drawing units
    QIcon m_face;
    std::unique_ptr<FigureTray> m_tray;
    bool m_visible = false;

    Done m_done;                     // null when no activity is on its way
    std::shared_ptr<int> m_activity; // a new one for each, so that a cut one's end is not delivered
    std::deque<Step> m_steps;
    bool m_byItself = false; // whether the body does what it does of its own will
    bool m_cutOff = false;   // whether the last motion was halted on its way
    bool m_resting = false;
    double m_untilReturn = 0;

    double m_lastTick = 0;
    QPoint m_slideFrom;
    QPoint m_slideTo;
    double m_slideBegan = 0;
    double m_slideTime = 0;
    QPointF m_carried; // how far the frame has been moved alive, in drawing units
    bool m_dragged = false;
    QPoint m_dragFrom;
    std::size_t m_lastAccent = 0;
    double m_lastAccentTime = 0;
};

} // namespace platform
