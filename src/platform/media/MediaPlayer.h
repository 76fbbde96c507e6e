#pragma once

#include <QString>

#include <memory>

class QPoint;
class QWidget;

namespace platform {

// A media player as it stands on a form. It draws by itself: a clip is seen over all controls of the form and
// under the characters, and heard, from Play to its own end, whatever Visible says meanwhile.
//
// A clip that is missing, damaged or of an unknown kind is not noticed: no member raises an error, shows a
// box or waits for a file. A missing sound device takes only the sound away. Nothing is read before Play and
// nothing is kept after the end. No member runs events; all are for the program's one thread.
class MediaPlayer {
public:
    virtual ~MediaPlayer() = default; // ends what plays

    // The clip for the next Play: a path as files take it. Setting any name, the same one too, ends what
    // plays.
    virtual void SetFileName(const QString &path) = 0;
    virtual QString FileName() const = 0;

    // Whether the empty control is to be seen, which has nothing to show; at first true. It is kept and given
    // back, and neither ends a clip nor hides it.
    virtual void SetVisible(bool visible) = 0;
    virtual bool Visible() const = 0;

    // 0 puts the clip in front of the form's controls, 1 behind them.
    virtual void ZOrder(int position) = 0;

    // Starts the clip from its beginning, also one that plays already. The first picture is there within
    // 300 ms. Nothing when the form is not to be seen.
    virtual void Play() = 0;
    // Whether a clip is on its way: from Play until the end of its pictures, or until it has turned out to be
    // none.
    virtual bool Playing() const = 0;
};

// Makes media players.
class Media {
public:
    virtual ~Media() = default;

    // A player on `form`, not null and owned by the caller, who may keep it for longer than the form lives.
    // Its clips have their upper left corner at `corner` in the units of the form, and are as large as fits
    // between there and the form's lower right corner; clicks go through to what lies under them. A clip ends
    // at once when the form is taken from the display or goes.
    [[nodiscard]] virtual std::unique_ptr<MediaPlayer> CreatePlayer(QWidget &form, const QPoint &corner) = 0;
};

} // namespace platform
