#include "game/QuestionList.h"

#include "platform/Subscript.h"
#include "platform/files/Files.h"
#include "platform/system/Chance.h"

namespace tumblewick {

namespace {

const QString kFree = QStringLiteral("False");
const QString kUsed = QStringLiteral("True");

} // namespace

void QuestionList::Read(platform::Files &files, const QString &path)
{
    m_rows.assign(1, Row());
    m_lineCount = 0;
    const auto reader = files.OpenForReading(path);
    while (!reader->AtEnd()) {
        const QString line = reader->ReadLine();
        if (!m_rows.front().used.isEmpty())
            m_rows.emplace_back();
        m_rows[static_cast<std::size_t>(int(m_lineCount))] = Row{ line, kFree };
        m_lineCount += 1;
    }
}

const QString &QuestionList::Line(int question) const
{
    return platform::At(m_rows, question).line;
}

void QuestionList::MarkUsed(int question)
{
    platform::At(m_rows, question).used = kUsed;
}

platform::Integer16 QuestionList::Draw(platform::Chance &chance) const
{
    chance.Randomize();
    platform::Integer16 question;
    do {
        question = platform::Drawn(chance, m_lineCount);
    } while (platform::At(m_rows, question).used != kFree);
    return question;
}

} // namespace tumblewick
