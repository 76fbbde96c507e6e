#include "shell/Players.h"

#include "platform/Subscript.h"
#include "platform/Text.h"

namespace tumblewick {

Players::Players(const QStringList &names)
{
    const QString zero = QStringLiteral("0");
    for (const QString &name : names)
        m_rows.push_back(Row{ name, zero, zero, zero });
}

const QString &Players::Text(int player, Column column) const
{
    return platform::At(m_rows, player)[column];
}

void Players::SetText(int player, Column column, const QString &text)
{
    platform::At(m_rows, player)[column] = text;
}

platform::Integer16 Players::Number(int player, Column column) const
{
    return platform::ToInteger16(Text(player, column));
}

void Players::AddOne(int player, Column column)
{
    const platform::Integer16 next = Number(player, column) + 1;
    SetText(player, column, QString::number(next));
}

} // namespace tumblewick
