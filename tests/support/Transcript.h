#pragma once

#include <QStringList>

namespace support {

// Writes down what the characters are asked, what becomes of it, which screens come and go and what media
// players are asked, as long as it lives. One at a time.
//
//   Merlin Speak "Good luck!"          asked
//   . Merlin Speak done                ended, at the moment at which it ended
//   screen frmSpell1 load
//   media Play
class Transcript {
public:
    Transcript();
    ~Transcript();

    const QStringList &Lines() const { return m_lines; }
    // What the characters were asked, without the endings, the screens and the media.
    QStringList Asked() const;
    // The texts that were said since the last Clear, with the speaker: `Merlin: Good luck!`.
    QStringList Said() const;
    void Clear() { m_lines.clear(); }

    // Drops what stands before the first line that begins so; everything when there is none.
    void StartAt(const QString &beginning);
    // Puts `line` in the place of the lines of tests/data/transcripts/<name>.txt, so that what is the same in
    // many transcripts is written down once. Nothing when they are not there, one behind the other.
    void Fold(const QString &name, const QString &line);

    // Compares with tests/data/transcripts/<name>.txt and gives what differs, empty when nothing does. With
    // UPDATE_TRANSCRIPTS set in the environment the file is written instead.
    QString Difference(const QString &name) const;

    void Take(const QString &traceLine);

private:
    QStringList m_lines;
};

} // namespace support
