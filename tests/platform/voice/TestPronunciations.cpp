#include "platform/voice/Pronunciations.h"

#include <QFile>
#include <QSet>
#include <QTest>

using platform::PronunciationOf;

// The dictionary of words that the voices would say badly.
class TestPronunciations : public QObject {
    Q_OBJECT
private slots:
    void wordIsFound_data();
    void wordIsFound();
    void everyEntryCanBeSaid();
    void letterHasItsName();
};

void TestPronunciations::wordIsFound_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("phones");
    const auto row = [](const char *word, const char *phones) { QTest::newRow(word) << word << phones; };
    row("Peedy", "p iy1 d iy0");
    row("MERLIN", "m er1 l ax0 n");
    row("genie's", "jh iy1 n iy0 z");
    row("Rhys's", "r iy1 s ih0 z");
    row("piglet's", "p ih1 g l ax0 t s");
    row("litre", "l iy1 t er0");
    row("Siobhan", "sh ax0 v ao1 n");
    row("cat", "");
    row("", "");
    row("'s", "");
    row("#", "");
}

void TestPronunciations::wordIsFound()
{
    QFETCH(QString, word);
    QFETCH(QString, phones);
    QCOMPARE(QString::fromLatin1(PronunciationOf(word)), phones);
}

void TestPronunciations::everyEntryCanBeSaid()
{
    static const QSet<QString> phones{ "aa", "ae", "ah", "ao", "aw", "ax", "ay", "b",  "ch", "d",
                                       "dh", "eh", "er", "ey", "f",  "g",  "hh", "ih", "iy", "jh",
                                       "k",  "l",  "m",  "n",  "ng", "ow", "oy", "p",  "r",  "s",
                                       "sh", "t",  "th", "uh", "uw", "v",  "w",  "y",  "z",  "zh" };
    static const QSet<QString> vowels{ "aa", "ae", "ah", "ao", "aw", "ax", "ay", "eh",
                                       "er", "ey", "ih", "iy", "ow", "oy", "uh", "uw" };
    QFile file(QStringLiteral(PRONUNCIATIONS));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QSet<QString> words;
    while (!file.atEnd()) {
        const auto line = QString::fromLatin1(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        auto parts = line.split(u' ');
        const auto word = parts.takeFirst();
        QVERIFY2(!words.contains(word), qPrintable(word + " stands there twice"));
        words.insert(word);
        QCOMPARE(word, word.toLower());
        int stressed = 0;
        bool sounds = false;
        for (auto part : parts) {
            const bool numbered = part.endsWith(u'0') || part.endsWith(u'1');
            stressed += part.endsWith(u'1') ? 1 : 0;
            if (numbered)
                part.chop(1);
            QVERIFY2(phones.contains(part), qPrintable(line));
            QVERIFY2(numbered == vowels.contains(part), qPrintable(line));
            sounds = sounds || numbered;
        }
        QVERIFY2(!sounds || stressed > 0, qPrintable(line));
        QCOMPARE(QString::fromLatin1(PronunciationOf(word)), parts.join(u' '));
    }
    QVERIFY(words.size() > 100);
}

void TestPronunciations::letterHasItsName()
{
    QCOMPARE(platform::LetterName(u'a'), "ey1");
    QCOMPARE(platform::LetterName(u'Z'), "z iy1");
    QCOMPARE(platform::LetterName(u'1'), "");
    QCOMPARE(platform::LetterName(QChar(0xe9)), "");
}

QTEST_GUILESS_MAIN(TestPronunciations)
#include "TestPronunciations.moc"
