#pragma once

#include "platform/forms/ListView.h"
#include "support/Desk.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace support {

inline const QString kWordUnderscored =
    QStringLiteral("The spelling for the word cannot contain an underscore. ");
inline const QString kSoundUnderscored =
    QStringLiteral("The pronunciation for the word cannot contain an underscore. ");

// The desk with what both screens for spelling lists have in common.
class SpellDesk : public Desk {
public:
    // `list` is the name of the control that shows the words.
    explicit SpellDesk(QString list) : m_list(std::move(list)) {}

    platform::ListView *List() { return Find<platform::ListView>(m_list); }
    // All words, each with a bar and its pronunciation, in the order of the list.
    QStringList Words()
    {
        QStringList words;
        for (int index = 1; index <= List()->Count(); ++index)
            words << List()->Item(index)->Text() + QLatin1Char('|') + List()->Item(index)->SubItem(1);
        return words;
    }
    // Whether the entry stands within the part of the list that is scrolled to.
    bool IsSeen(int index)
    {
        const platform::ListView &list = *List();
        return list.viewport()->rect().contains(list.visualRect(list.model()->index(index - 1, 0)).center());
    }
    QStringList Titles()
    {
        QStringList titles;
        for (int column = 0; column < List()->model()->columnCount(); ++column)
            titles << List()->model()->headerData(column, Qt::Horizontal).toString();
        return titles;
    }
    // What stands in the boxes of these names.
    QStringList Typed(const QStringList &names)
    {
        QStringList texts;
        for (const QString &box : names)
            texts << Find<QLineEdit>(box)->text();
        return texts;
    }
    static QString DeleteQuestion(const QString &word)
    {
        return QStringLiteral("Are you sure you want to delete ") + word + QStringLiteral(" from the list?");
    }
    // `button` deletes the selected word.
    void Delete(const QString &button, const QString &word)
    {
        boxes.Expect(DeleteQuestion(word), platform::BoxAnswer::Yes);
        Press(button);
    }

    // Columns and rows for what is told of a word and a pronunciation; `missing` is the sentence for a word
    // that is not there.
    static void FaultRows(const QString &missing)
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("pronunciation");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const char *word, const char *sound, const QString &message) {
            QTest::newRow(name) << QString::fromLatin1(word) << QString::fromLatin1(sound) << message;
        };
        row("all empty", "", "", missing);
        row("underscore in the word", "a_", "", kWordUnderscored);
        row("underscore in the pronunciation", "ab", "_", kSoundUnderscored);
        row("underscores in both", "a_b", "_c", kWordUnderscored + kSoundUnderscored);
        row("no word, underscore", "", "c_d", missing + kSoundUnderscored);
    }

private:
    const QString m_list;
};

// Columns and rows for a disk that takes no file, or not all of it.
inline void DiskFaultRows()
{
    QTest::addColumn<FaultyFiles::Operation>("operation");
    QTest::addColumn<qint32>("number");
    QTest::newRow("protected") << FaultyFiles::Operation::OpenForWriting << 70;
    QTest::newRow("full in the middle") << FaultyFiles::Operation::Write << 61;
    QTest::newRow("full at the end") << FaultyFiles::Operation::Close << 61;
}

} // namespace support
