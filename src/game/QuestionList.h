#pragma once

#include "platform/Integer16.h"

#include <QString>

#include <vector>

namespace platform {
class Chance;
class Files;
} // namespace platform

namespace tumblewick {

// The lines of the list that is being played, whole and unparsed, and which of them have been asked.
class QuestionList {
public:
    // Reads the file anew: every line is a question, an empty one too, and none has been asked. Raises what
    // opening and reading raise, and 6 for a list of more lines than a 16-bit number counts.
    void Read(platform::Files &files, const QString &path);

    platform::Integer16 LineCount() const { return m_lineCount; }
    // Whether there are more players than questions. So a list without lines is too short for anybody.
    bool TooFewFor(int players) const { return players > m_lineCount; }

    // Raise 9 for a question that is not there.
    const QString &Line(int question) const;
    void MarkUsed(int question);

    // The number of a question that has not been used, each with the same chance. The generator is seeded
    // once, and lines are drawn until a free one comes. There has to be a free one.
    platform::Integer16 Draw(platform::Chance &chance) const;

private:
    struct Row {
        QString line;
        QString used; // "False" or "True"; empty in the row that a list without lines is left with
    };

    std::vector<Row> m_rows{ Row() };
    platform::Integer16 m_lineCount;
};

} // namespace tumblewick
