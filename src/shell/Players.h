#pragma once

#include "platform/Integer16.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace tumblewick {

// The table of the players: a row for each, columns of text. Numbers are held as decimal text.
class Players {
public:
    enum Column { kName = 0, kCorrect = 1, kAsked = 2, kHints = 3 };
    static constexpr int kColumns = 4;

    Players() = default;
    // A new table: one player for each name, all counters "0".
    explicit Players(const QStringList &names);

    int Count() const { return static_cast<int>(m_rows.size()); }

    // Raise 9 for a player that is not there.
    const QString &Text(int player, Column column) const;
    void SetText(int player, Column column, const QString &text);

    // Reads the text as a number. Raises 9, 13 for no number, 6 for one beyond 16 bits.
    platform::Integer16 Number(int player, Column column) const;
    // Reads the text as a number, adds one and writes it back as text. Raises as Number does.
    void AddOne(int player, Column column);

private:
    using Row = std::array<QString, kColumns>;
    std::vector<Row> m_rows;
};

} // namespace tumblewick
