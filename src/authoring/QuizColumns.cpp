#include "authoring/QuizColumns.h"

#include "lists/QuizList.h"
#include "platform/Integer16.h"
#include "platform/forms/ListView.h"
#include "platform/forms/Twips.h"

#include <QStringList>

namespace tumblewick {

namespace {

constexpr int kColumns = 1 + QuizEntry::kSubItems;

} // namespace

QuizColumns::QuizColumns(platform::ListView &list) : m_list(list), m_width(platform::Twips(list).width)
{
    list.SetColumns({ QStringLiteral("Question"), QStringLiteral("Answer 1"), QStringLiteral("Answer 2"),
                      QStringLiteral("Answer 3"), QStringLiteral("Answer 4"), QStringLiteral("Correct") });
    list.SetColumnTwips(1, m_width * 2 / 5);
}

void QuizColumns::Share()
{
    const platform::Integer16 columnWidth = platform::Twips(m_list).width - m_list.ColumnTwips(1);
    for (int column = 2; column <= kColumns; ++column)
        m_list.SetColumnTwips(column, columnWidth / QuizEntry::kSubItems);
}

void QuizColumns::FollowList()
{
    const int width = platform::Twips(m_list).width;
    for (int column = 1; column <= kColumns; ++column)
        m_list.SetColumnTwips(column, static_cast<int>(qint64(m_list.ColumnTwips(column)) * width / m_width));
    m_width = width;
}

} // namespace tumblewick
