#include "platform/agent/PuppetFigure.h"

#include "platform/Error.h"
#include "platform/agent/ScreenArea.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace platform {

namespace {

constexpr int kFullRate = 60;
constexpr int kBreathingRate = 20;
// What asks for the next motion has this long before a held pose is given up.
constexpr double kHoldTime = 0.25; // seconds
constexpr double kBetweenAccents = 0.6;
// How much of the frame's own movement reaches hat and beard.
constexpr double kFlightCarry = 0.35;
constexpr double kDragCarry = 0.6;
constexpr double kShortestSlide = 0.2; // what is left of a flight after a drag, seconds
constexpr int kSeen = 60;              // of 255
constexpr int kFaceIconSize = 128;

// All figures of the program, so that the balloon of one may leave the faces of the others free.
std::vector<const PuppetFigure *> g_figures;

QRectF SeenArea(const QImage &image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) > kSeen)
                area |= QRect(x, y, 1, 1);
        }
    }
    const double scale = kDrawingSize / image.width();
    return QRectF(area.x() * scale, area.y() * scale, area.width() * scale, area.height() * scale);
}

} // namespace

PuppetFigure::PuppetFigure(std::shared_ptr<const CharacterData> character, SpeechEngine &engine,
                           AudioOut &audio, Events &events, OptionsKeeper &options,
                           std::unique_ptr<Ticker> ticker, std::uint32_t seed, SoundEffects *effects)
    : m_character(std::move(character)), m_events(events), m_ticker(std::move(ticker)), m_player(m_character),
      m_puppet(m_character), m_idle(*m_character, seed),
      m_speech(*m_character, engine, audio, events, options), m_effects(effects),
      m_window(m_character->name, m_puppet.Image()), m_frame(QPoint(0, 0), m_character->size),
      m_activity(std::make_shared<int>())
{
    g_figures.push_back(this);
    m_puppet.SetSize(QSize(kFaceIconSize, kFaceIconSize));
    m_puppet.Draw(m_player.Shown(), m_player.Frames());
    m_seenAtRest = SeenArea(m_puppet.Image());
    const double scale = kFaceIconSize / kDrawingSize;
    const QRectF face = m_character->face;
    const QRect icon = QRectF(face.topLeft() * scale, face.size() * scale).toAlignedRect();
    m_face = QIcon(QPixmap::fromImage(m_puppet.Image().copy(icon)));

    m_ticker->tick = [this] { Tick(); };
    m_window.pressed = [this] {
        if (!m_speech.IsBusy())
            m_speech.HideBalloon();
    };
    m_window.dragBegins = [this] {
        m_dragged = true;
        if (IsSliding())
            m_slideTime = std::max(m_slideTime - (m_ticker->Now() - m_slideBegan), kShortestSlide);
        m_dragFrom = m_frame.topLeft();
        PostDragged(true);
    };
    m_window.dragged = [this](QPoint way) { MoveFrame(m_dragFrom + way, kDragCarry); };
    m_window.dragEnds = [this] {
        m_dragged = false;
        if (IsSliding())
            BeginStep(); // on from where he was put down
        PostDragged(false);
    };
    m_window.hideChosen = [this] { PostHideAsked(true); };
    m_window.menuAsked = [this] { return menuAsked ? menuAsked() : std::vector<MenuGroup>{}; };
    SetFrame(m_frame);
    WatchScreens();
}

PuppetFigure::~PuppetFigure()
{
    std::erase(g_figures, this);
    m_ticker->SetRate(0);
    m_window.dragEnds = nullptr;
}

void PuppetFigure::PostDragged(bool begins)
{
    m_events.Post([weak = std::weak_ptr<int>(m_alive), this, begins] {
        if (!weak.expired() && dragged)
            dragged(begins);
    });
}

void PuppetFigure::PostHideAsked(bool hide)
{
    m_events.Post([weak = std::weak_ptr<int>(m_alive), this, hide] {
        if (!weak.expired() && hideAsked)
            hideAsked(hide);
    });
}

void PuppetFigure::WatchScreens()
{
    // Later, when all screens are known as they are now.
    const auto later = [this] {
        m_events.Post([weak = std::weak_ptr<int>(m_alive), this] {
            if (!weak.expired())
                ReturnToScreens();
        });
    };
    const auto watch = [this, later](QScreen *screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &m_window, later);
    };
    for (QScreen *screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_window, watch);
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &m_window, later);
}

void PuppetFigure::ReturnToScreens()
{
    const QRect area = ScreenAreaAt(m_frame.center());
    if (!m_visible || IsSliding() || area.contains(m_frame.center()))
        return;
    m_player.ForgetPlace();
    MoveFrame(MovedInto(area, m_frame.topLeft(), m_frame.size()), 0);
}

void PuppetFigure::SetFrame(const QRect &frame)
{
    m_frame = frame;
    m_player.ForgetPlace();
    m_window.setFixedSize(frame.size());
    m_window.SetBody(ToScreen(m_seenAtRest).translated(-frame.topLeft()));
    m_window.move(frame.topLeft());
    FollowWithBalloon();
    if (m_visible)
        Draw();
}

void PuppetFigure::MoveFrame(const QPoint &topLeft, double carry)
{
    const QPoint way = topLeft - m_frame.topLeft();
    m_carried += QPointF(way) * (carry * kDrawingSize / m_frame.width());
    m_frame.moveTopLeft(topLeft);
    m_window.move(topLeft);
    FollowWithBalloon();
}

QRect PuppetFigure::ToScreen(const QRectF &area) const
{
    const double scaleX = m_frame.width() / kDrawingSize;
    const double scaleY = m_frame.height() / kDrawingSize;
    return QRectF(m_frame.left() + area.left() * scaleX, m_frame.top() + area.top() * scaleY,
                  area.width() * scaleX, area.height() * scaleY)
        .toAlignedRect();
}

void PuppetFigure::FollowWithBalloon()
{
    const QPoint mouth = ToScreen(QRectF(m_character->mouthPoint, QSizeF(1, 1))).topLeft();
    std::vector<QRect> others;
    for (const PuppetFigure *figure : g_figures) {
        if (figure != this && figure->m_visible)
            others.push_back(figure->Face());
    }
    m_speech.MoveBalloon({ ToScreen(m_seenAtRest), Face(), mouth, std::move(others), {} });
}

void PuppetFigure::Appear()
{
    m_tray.reset();
    m_visible = true;
    m_window.SetTouchable(true);
    m_steps.clear();
    m_byItself = false;
    m_cutOff = false;
    m_resting = false;
    m_player.Reset();
    m_lastTick = m_ticker->Now();
    Draw();
    m_window.move(m_frame.topLeft());
    m_window.show();
    m_window.BringToFront();
    ChooseRate();
}

void PuppetFigure::Disappear(bool byUser)
{
    Halt();
    m_resting = false;
    m_visible = false;
    m_window.hide();
    ChooseRate();
    if (byUser)
        m_tray = std::make_unique<FigureTray>(m_character->name, m_face, m_frame,
                                              [this] { PostHideAsked(false); });
}

void PuppetFigure::BeginActivity(Done done)
{
    PassTime();
    m_resting = false;
    m_done = std::move(done);
    m_activity = std::make_shared<int>();
}

void PuppetFigure::FinishActivity(qint32 number)
{
    if (!m_done)
        return;
    m_events.Post([weak = std::weak_ptr<int>(m_activity), done = std::exchange(m_done, nullptr), number] {
        if (!weak.expired())
            done(number);
    });
}

// The steps from what the body does now to where `next`, or a speech, can begin.
std::deque<PuppetFigure::Step> PuppetFigure::ComeBack(const Motion *next, bool forSpeech) const
{
    const Motion *current = m_player.Current();
    // What the body does of its own will delays nothing.
    if (!current || m_byItself)
        return {};
    if (forSpeech && current->speaks && !m_cutOff)
        return {};
    switch (current->comesBack) {
    case Motion::Return::None:
        if (m_cutOff && !next)
            return { Step{ Step::Kind::Settle } };
        return {};
    case Motion::Return::Blend:
        return { Step{ Step::Kind::Settle } };
    case Motion::Return::Motion:
        break;
    }
    const Motion *back = m_character->FindMotion(current->returnMotion);
    // Motions with one return share a pose: a book that is open stays open.
    const bool sharesPose = next && next->comesBack == Motion::Return::Motion &&
                            m_character->FindMotion(next->returnMotion) == back;
    if (next == back || sharesPose)
        return {};
    return { Step{ Step::Kind::Play, back } };
}

void PuppetFigure::BeginSteps(std::deque<Step> steps)
{
    m_steps = std::move(steps);
    m_cutOff = false;
    // A motion that is left takes its sound with it. What was asked for has been heard by now, but for a
    // flight's; a speech waits for that.
    if (!m_steps.empty() && m_steps.front().kind != Step::Kind::Slide &&
        m_steps.front().kind != Step::Kind::Hush)
        m_effects.FadeOut();
    if (!m_steps.empty())
        BeginStep();
    ChooseRate();
}

void PuppetFigure::BeginStep()
{
    const Step &step = m_steps.front();
    switch (step.kind) {
    case Step::Kind::Settle:
        m_player.Settle();
        break;
    case Step::Kind::Play:
        m_player.Play(*step.motion);
        m_effects.Follow(m_player, m_ticker->Now());
        break;
    case Step::Kind::Wait:
        m_effects.Follow(m_player, m_ticker->Now());
        break;
    case Step::Kind::Hush:
        break;
    case Step::Kind::Slide:
        m_slideFrom = m_frame.topLeft();
        m_slideBegan = m_ticker->Now();
        break;
    case Step::Kind::Talk:
        m_speech.Start();
        break;
    }
}

bool PuppetFigure::StepHasEnded()
{
    switch (m_steps.front().kind) {
    case Step::Kind::Settle:
        return m_player.HasEnded();
    case Step::Kind::Play:
    case Step::Kind::Wait:
        // The sound of a flight goes on while the figure flies.
        return m_player.HasEnded() && (m_steps.front().motion->aloft || m_effects.AreOver(m_ticker->Now()));
    case Step::Kind::Hush:
        return m_effects.AreOver(m_ticker->Now());
    case Step::Kind::Slide:
        // Judged by the moment that the frame has been brought to, or it would end before its place.
        return !m_dragged && m_lastTick - m_slideBegan >= m_slideTime;
    case Step::Kind::Talk:
        return !m_speech.IsBusy();
    }
    return true;
}

void PuppetFigure::Perform(const QString &name, Done done)
{
    BeginActivity(std::move(done));
    const Motion *motion = m_character->FindMotion(name);
    if (!motion) {
        m_steps.clear();
        return FinishActivity(kNoSuchAnimation);
    }
    if (name.compare(QLatin1String("Show"), Qt::CaseInsensitive) == 0) {
        m_byItself = false;
        m_player.PlayAtOnce(*motion);
        BeginSteps({ Step{ Step::Kind::Wait, motion } });
        return Draw();
    }
    if (name.compare(QLatin1String("Hide"), Qt::CaseInsensitive) == 0) {
        m_speech.HideBalloon();
        m_window.SetTouchable(false);
    }
    std::deque<Step> steps = ComeBack(motion, false);
    steps.push_back({ Step::Kind::Play, motion });
    m_byItself = false;
    BeginSteps(std::move(steps));
}

void PuppetFigure::Slide(const QPoint &topLeft, std::chrono::milliseconds duration, Done done)
{
    BeginActivity(std::move(done));
    m_byItself = false;
    m_slideTo = topLeft;
    m_slideTime = std::chrono::duration<double>(duration).count();
    BeginSteps({ Step{ Step::Kind::Slide } });
}

void PuppetFigure::Speak(const SpeechText &text, bool balloon, Done done)
{
    BeginActivity(std::move(done));
    if (const qint32 obstacle = m_speech.Obstacle(); obstacle != 0) {
        m_steps.clear();
        return FinishActivity(obstacle);
    }
    FollowWithBalloon(); // the others may have moved
    std::deque<Step> steps = ComeBack(nullptr, true);
    if (m_byItself && m_player.Current()) {
        m_player.Settle();
        m_effects.FadeOut();
    }
    m_byItself = false;
    if (!steps.empty() || !m_effects.AreOver(m_ticker->Now()))
        steps.push_back({ Step::Kind::Hush });
    steps.push_back({ Step::Kind::Talk });
    // Made while the body comes back.
    m_speech.Begin(text, balloon, [this](qint32 number) {
        m_steps.clear();
        m_player.ShowMouth(std::nullopt);
        FinishActivity(number);
        ChooseRate();
    });
    BeginSteps(std::move(steps));
}

void PuppetFigure::Halt()
{
    PassTime();
    m_activity = std::make_shared<int>();
    m_done = nullptr;
    m_speech.Stop();
    m_speech.HideBalloon();
    m_window.SetTouchable(true);
    m_player.ShowMouth(std::nullopt);
    if (!m_steps.empty() && !m_byItself) {
        m_cutOff = !m_player.HasEnded();
        m_player.Hold();
    }
    m_effects.FadeOut();
    m_steps.clear();
    ChooseRate();
}

void PuppetFigure::Rest()
{
    PassTime();
    const Motion *current = m_player.Current();
    const bool atOnce = m_cutOff || (current && current->aloft);
    if (!m_resting)
        m_untilReturn = atOnce ? 0 : kHoldTime;
    m_resting = true;
    m_idle.BeginWaiting();
    ChooseRate();
}

// What happens without being asked for, once the queue is empty.
void PuppetFigure::LiveOn(double seconds)
{
    if (m_untilReturn >= 0) {
        m_untilReturn -= seconds;
        if (m_untilReturn >= 0)
            return;
        std::deque<Step> steps = ComeBack(nullptr, false);
        m_byItself = true;
        return BeginSteps(std::move(steps));
    }
    const Motion *playing = m_player.Current();
    if (!m_steps.empty()) {
        const bool longEnough = m_idle.LoopIsOver(seconds);
        if (!playing || !playing->loop || !longEnough)
            return;
        m_steps.clear();
    }
    if (playing && playing->comesBack != Motion::Return::None) {
        m_byItself = false;
        std::deque<Step> steps = ComeBack(nullptr, false);
        m_byItself = true;
        return BeginSteps(std::move(steps));
    }
    if (const Motion *motion = m_idle.MotionDue(seconds))
        BeginSteps({ Step{ Step::Kind::Play, motion } });
}

void PuppetFigure::SlideOn()
{
    if (!IsSliding() || m_dragged)
        return;
    const double passed = m_slideTime > 0 ? (m_lastTick - m_slideBegan) / m_slideTime : 1;
    const QPointF way = QPointF(m_slideTo - m_slideFrom) * Eased(Ease::InOut, std::clamp(passed, 0.0, 1.0));
    MoveFrame(m_slideFrom + way.toPoint(), kFlightCarry);
}

// Brings the body up to now.
void PuppetFigure::PassTime()
{
    const double now = m_ticker->Now();
    const double seconds = now - m_lastTick;
    m_lastTick = now;
    if (!m_visible || !(seconds > 0))
        return;
    SlideOn();
    m_player.Advance(seconds, m_carried);
    m_effects.Follow(m_player, now);
}

void PuppetFigure::Tick()
{
    const double before = m_lastTick;
    if (m_speech.IsBusy()) {
        m_speech.Follow();
        m_player.ShowMouth(m_speech.MouthNow());
        const double now = m_ticker->Now();
        if (m_speech.TakeStress() && now - m_lastAccentTime > kBetweenAccents) {
            m_lastAccent = m_idle.Another(m_character->accents.size(), m_lastAccent);
            m_lastAccentTime = now;
            m_player.Accent(m_lastAccent);
        }
    }
    PassTime();
    const double seconds = m_lastTick - before;
    if (m_idle.BlinkIsDue(seconds))
        m_player.Blink();
    while (!m_steps.empty() && StepHasEnded()) {
        m_steps.pop_front();
        if (!m_steps.empty())
            BeginStep();
        else
            FinishActivity(0);
    }
    if (m_resting && !m_done)
        LiveOn(seconds);
    // What nobody sees is not drawn.
    const QWindow *window = m_window.windowHandle();
    if (m_visible && window && window->isExposed())
        Draw();
    ChooseRate();
}

void PuppetFigure::FitPicture()
{
    const QSize pixels = (QSizeF(m_frame.size()) * m_window.devicePixelRatioF()).toSize();
    m_puppet.SetSize(pixels);
}

void PuppetFigure::Draw()
{
    FitPicture();
    m_window.PictureChanged(m_puppet.Draw(m_player.Shown(), m_player.Frames()));
}

void PuppetFigure::ChooseRate()
{
    if (!m_visible)
        return m_ticker->SetRate(0);
    const bool busy = !m_steps.empty() || m_speech.IsBusy() || m_dragged || m_player.IsMoving();
    m_ticker->SetRate(busy ? kFullRate : kBreathingRate);
}

} // namespace platform
