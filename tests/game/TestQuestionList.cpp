#include "game/QuestionList.h"
#include "platform/Error.h"
#include "platform/files/DiskFiles.h"
#include "platform/system/SystemChance.h"
#include "support/FakeChance.h"
#include "support/FaultyFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>

using namespace tumblewick;
using support::FaultyFiles;

namespace {

// As many lines as a 16-bit number counts.
constexpr int kMostLines = 32767;

QByteArray Lines(int count)
{
    QByteArray lines;
    for (int line = 0; line < count; ++line)
        lines += QByteArray::number(line) + "\r\n";
    return lines;
}

} // namespace

// A list in memory, and which of its questions comes next.
class TestQuestionList : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_files.Heal();
        m_questions = QuestionList();
    }

    void everyLineIsAQuestion_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("nothing") << QByteArray() << QStringList();
        QTest::newRow("one word") << QByteArray("cat\r\n") << QStringList({ "cat" });
        QTest::newRow("no end behind the last") << QByteArray("cat\r\ndog") << QStringList({ "cat", "dog" });
        QTest::newRow("a blank line at the end") << QByteArray("cat\r\n\r\n") << QStringList({ "cat", "" });
        QTest::newRow("a blank line alone") << QByteArray("\r\n") << QStringList({ "" });
        QTest::newRow("a blank line at the start") << QByteArray("\r\ncat\r\n") << QStringList({ "", "cat" });
        QTest::newRow("from another system") << QByteArray("cat\ndog\n") << QStringList({ "cat", "dog" });
        QTest::newRow("nothing is taken apart or trimmed")
            << QByteArray(" knight_nite \r\nQ_a_b_c_d_1_\r\n")
            << QStringList({ " knight_nite ", "Q_a_b_c_d_1_" });
        QTest::newRow("the words that mark lines")
            << QByteArray("False\r\nTrue\r\n") << QStringList({ "False", "True" });
        QTest::newRow("an accent") << QByteArray("caf\xe9\r\n") << QStringList({ QString("caf\u00e9") });
        QTest::newRow("an emoji") << QByteArray("\xf0\x9f\x90\xb1\r\n")
                                  << QStringList({ QString("\U0001f431") });
        QTest::newRow("a very long word") << QByteArray(10000, 'x') + "\r\n"
                                          << QStringList({ QString(10000, 'x') });
    }
    void everyLineIsAQuestion()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, lines);
        m_questions.Read(m_files, Written(content));
        QCOMPARE(int(m_questions.LineCount()), lines.size());
        for (int line = 0; line < lines.size(); ++line)
            QCOMPARE(m_questions.Line(line), lines[line]);
    }

    void aListCanBeTooShort_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("players");
        QTest::addColumn<bool>("tooFew");
        QTest::newRow("more players than lines") << 3 << 4 << true;
        QTest::newRow("as many players as lines") << 4 << 4 << false;
        QTest::newRow("one line, one player") << 1 << 1 << false;
        QTest::newRow("one line, two players") << 1 << 2 << true;
        QTest::newRow("no lines, one player") << 0 << 1 << true;
        QTest::newRow("no lines, five players") << 0 << 5 << true;
    }
    void aListCanBeTooShort()
    {
        QFETCH(int, lines);
        QFETCH(int, players);
        m_questions.Read(m_files, Written(Lines(lines)));
        QTEST(m_questions.TooFewFor(players), "tooFew");
    }

    void whatIsNotThereRaises()
    {
        m_questions.Read(m_files, Written("cat\r\ndog\r\n"));
        for (const int question : { -1, 2 }) {
            QCOMPARE(NumberOf([&] { m_questions.Line(question); }), qint32(platform::kSubscriptOutOfRange));
            QCOMPARE(NumberOf([&] { m_questions.MarkUsed(question); }),
                     qint32(platform::kSubscriptOutOfRange));
        }
    }

    void aFileThatCannotBeReadRaises()
    {
        QCOMPARE(NumberOf([&] { m_questions.Read(m_files, m_folder.filePath("missing")); }),
                 qint32(platform::kFileNotFound));
        m_files.Fail(FaultyFiles::Operation::ReadLine, platform::kDeviceError, 1, 2);
        QCOMPARE(NumberOf([&] { m_questions.Read(m_files, Written(Lines(5))); }),
                 qint32(platform::kDeviceError));
    }

    void theLongestListCanBeReadAndNoLongerOne()
    {
        m_questions.Read(m_files, Written(Lines(kMostLines)));
        QCOMPARE(int(m_questions.LineCount()), kMostLines);
        QCOMPARE(m_questions.Line(kMostLines - 1), QString("32766"));
        QCOMPARE(NumberOf([&] { m_questions.Read(m_files, Written(Lines(kMostLines + 1))); }),
                 qint32(platform::kOverflow));
    }

    void readingAgainForgetsWhatWasAsked()
    {
        m_questions.Read(m_files, Written(Lines(3)));
        m_questions.MarkUsed(1);
        m_questions.Read(m_files, Written("cat\r\ndog\r\n"));
        QCOMPARE(int(m_questions.LineCount()), 2);
        QCOMPARE(NumberOf([&] { m_questions.Line(2); }), qint32(platform::kSubscriptOutOfRange));
        support::FakeChance chance;
        chance.QueueDraw(1, 2);
        QCOMPARE(int(m_questions.Draw(chance)), 1);
    }

    void aDrawGoesOnUntilAFreeLineComes()
    {
        m_questions.Read(m_files, Written(Lines(4)));
        for (const int used : { 0, 1, 3 })
            m_questions.MarkUsed(used);
        support::FakeChance chance;
        for (const int drawn : { 3, 0, 0, 1, 2 })
            chance.QueueDraw(drawn, 4);
        QCOMPARE(int(m_questions.Draw(chance)), 2);
        QCOMPARE(chance.Left(), 0);
        // Seeded once, before the first number.
        QCOMPARE(chance.RandomizedAfter(), std::vector<int>{ 0 });
    }

    void everyDrawSeedsAnew()
    {
        m_questions.Read(m_files, Written(Lines(4)));
        support::FakeChance chance;
        for (const int drawn : { 2, 2, 0 })
            chance.QueueDraw(drawn, 4);
        QCOMPARE(int(m_questions.Draw(chance)), 2);
        m_questions.MarkUsed(2);
        QCOMPARE(int(m_questions.Draw(chance)), 0);
        QCOMPARE(chance.RandomizedAfter(), (std::vector<int>{ 0, 1 }));
    }

    void drawingUsesNothingUp()
    {
        m_questions.Read(m_files, Written(Lines(4)));
        support::FakeChance chance;
        chance.QueueDraw(3, 4);
        chance.QueueDraw(3, 4);
        QCOMPARE(int(m_questions.Draw(chance)), 3);
        QCOMPARE(int(m_questions.Draw(chance)), 3);
    }

    void everyLineHasTheSameShareOfTheNumbers()
    {
        m_questions.Read(m_files, Written(Lines(3)));
        support::FakeChance chance;
        for (const float number : { 0.0F, 0.3333F, 0.3334F, 0.6666F, 0.6667F, 0x1.fffffep-1F })
            chance.Queue(number);
        QList<int> drawn;
        for (int draw = 0; draw < 6; ++draw)
            drawn << m_questions.Draw(chance);
        QCOMPARE(drawn, QList<int>({ 0, 0, 1, 1, 2, 2 }));
    }

    void theNumberBelowOneDrawsTheLastLineOfTheLongestList()
    {
        m_questions.Read(m_files, Written(Lines(kMostLines)));
        support::FakeChance chance;
        chance.Queue(0x1.fffffep-1F);
        QCOMPARE(int(m_questions.Draw(chance)), kMostLines - 1);
    }

    void theLongestListIsAskedWholeAndNothingTwice()
    {
        m_questions.Read(m_files, Written(Lines(kMostLines)));
        platform::SystemChance chance;
        std::vector<int> asked;
        for (int draw = 0; draw < kMostLines; ++draw) {
            const int question = m_questions.Draw(chance);
            m_questions.MarkUsed(question);
            asked.push_back(question);
        }
        QVERIFY(!std::is_sorted(asked.begin(), asked.end()));
        std::sort(asked.begin(), asked.end());
        for (int question = 0; question < kMostLines; ++question)
            QCOMPARE(asked[static_cast<std::size_t>(question)], question);
    }

private:
    QString Written(const QByteArray &content)
    {
        const QString path = m_folder.filePath("list");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("the list cannot be written");
        return path;
    }

    // The number of the error that `work` raises, 0 for none.
    template <class Work>
    static qint32 NumberOf(Work work)
    {
        try {
            work();
        } catch (const platform::Error &error) {
            return error.Number();
        }
        return 0;
    }

    QTemporaryDir m_folder;
    platform::DiskFiles m_disk;
    FaultyFiles m_files{ m_disk };
    QuestionList m_questions;
};

QTEST_APPLESS_MAIN(TestQuestionList)
#include "TestQuestionList.moc"
