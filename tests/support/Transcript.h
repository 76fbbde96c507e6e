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

    // Compares with tests/data/transcripts/<name>.txt and gives what differs, empty when nothing does. With
    // UPDATE_TRANSCRIPTS set in the environment the file is written instead.
    QString Difference(const QString &name) const;

    void Take(const QString &traceLine);

private:
    QStringList m_lines;
};

} // namespace support
