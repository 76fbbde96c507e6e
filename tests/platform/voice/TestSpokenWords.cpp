#include "platform/voice/SpokenWords.h"

#include "platform/voice/Pronunciations.h"

#include <QTest>

using platform::LetterName;
using platform::PronunciationOf;
using platform::SpeechText;
using platform::SpokenWords;

// What the engine gets to say of a line.
class TestSpokenWords : public QObject {
    Q_OBJECT
private slots:
    void lineBecomesWords_data();
    void lineBecomesWords();
    void wordsKnowTheirUnits();
    void pausesFollowTheMarks_data();
    void pausesFollowTheMarks();
    void sentencesEnd_data();
    void sentencesEnd();
    void pausesAskedForArePassedOn();
    void pronunciationsAreFound_data();
    void pronunciationsAreFound();
    void everyLetterHasAName();
    void marksOfOtherScriptsArePausesToo_data();
    void marksOfOtherScriptsArePausesToo();
};

// Words with the mark behind them; a named letter stands between bars.
static QString Written(const SpokenWords &spoken)
{
    QStringList words;
    for (const auto &word : spoken.words) {
        const auto text = QString::fromLatin1(word.text);
        const bool named =
            word.text.size() == 1 && word.phones == LetterName(text[0]) && !word.phones.isEmpty();
        words << (named ? '|' + text + '|' : text) + QString::fromLatin1(word.punctuation);
    }
    return words.join(u' ');
}

void TestSpokenWords::lineBecomesWords_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const char *line, const QString &words) {
        QTest::newRow(name) << QString::fromUtf8(line) << words;
    };
    row("question", R"(Ann, how do you spell: \map="nite"="*****"\?)", "Ann, how do you spell: nite?");
    row("spelled word", R"(\map="C, ,A, ,T, ,"="cat"\)", "|C|, |A|, |T|,");
    row("spelled word with a space", R"(\map="A, , , ,B, ,"="a b"\)", "|A|, |B|,");
    row("spelled word with a hyphen", R"(\map="X, ,-, ,B, ,"="x-b"\)", "|X|, |B|,");
    row("double letters", R"(\map="E, ,G, ,G, ,"="egg"\)", "|E|, |G|, |G|,");
    row("first hint", R"(The first letter of \map="cat"="*****"\ is: A.)",
        "The first letter of cat is: |A|.");
    row("later hint", R"(The first 3 letters of \map="air"="*****"\ are: A,I,R.)",
        "The first 3 letters of air are: |A|, |I|, |R|.");
    row("single letter", "A", "|A|");
    row("single small letter", "a", "|a|");
    row("article", "A cat is a pet. A dog, too. I am", "A cat is a pet. A dog, too. I am");
    row("letter in a sentence", "Take vitamin A and plan B", "Take vitamin |A| and plan |B|");
    row("mark apart", "Hello, Merlin is here !", "Hello, Merlin is here!");
    row("many marks", "Play a Quiz!!. Go", "Play a Quiz! Go");
    row("no blank behind a mark", "noise.Go,now", "noise. Go, now");
    row("dots", "well... yes", "well. yes");
    row("marks first", "...well", "well");
    row("quotes", R"("Oh 'dear'!" he said)", "Oh dear! he said");
    row("apostrophes", "don't can’t O'Neil's 'tis", "don't can't O'Neil's tis");
    row("brackets", "a cat (big) sat [x]", "a cat, big, sat |x|");
    row("hyphen", "well-known mother-in-law", "well known mother in law");
    row("dash", "one - two -- three — four", "one, two, three, four");
    row("accents", "Zoë, François and naïve café Ångström", "Zoe, Francois and naive cafe Angstrom");
    row("accents apart", "e\u0301te\u0301", "ete");
    row("letters of our neighbours", "Straße Łódź Æsop œuvre Þor", "Strasse Lodz Aesop oeuvre Thor");
    row("wide letters", "Ａｂ", "Ab");
    row("nothing to say", "🙂 Привет 世界 ?", "");
    row("emoji between", "hello 🦜 bird", "hello bird");
    row("control characters", "a\x01word\x7f\tb\nlate", "a word |b| late");
    row("invisible characters", "hel\u00adlo\u200b", "hello");
    row("signs", "salt & pepper @ home 50% #1 of #", "salt and pepper at home 50 percent number 1 of");
    row("markup", "<b>bold</b>", "|b| bold |b|");
    row("underscores", "snake_case a_b", "snake case |a| |b|");
    row("backslashes", R"(A\\B)", "|A| |B|");
    row("bars", "yes|no", "yes no");
    row("sums", "5 + 3 = 8, 5 - 3, 5-3, 5 x 3, 5x3, 5 * 3, 6 / 2, 6÷2, 3×4, -4 < 2",
        "5 plus 3 equals 8, 5 minus 3, 5 minus 3, 5 times 3, 5 times 3, 5 times 3, 6 over 2, 6 divided by 2, "
        "3 times "
        "4, minus 4 less than 2");
    row("x in a word", "x-ray box 5 xylophones", "|x| ray box 5 xylophones");
    row("halves and squares", "½ of 3² at 20°", "one half of 3 squared at 20 degrees");
    row("money", "$5 £5 €3.50 $", "$5 5 pounds 3.50 euros");
    row("money alone and doubled", "£ ££5 a£5 5€6 $$7 £1,000",
        "5 pounds a 5 pounds 5 6 euros $7 1,000 pounds");
    row("decimals", "3.14 .5 5.", "3.14 0.5 5.");
    row("groups of digits", "1,000 1000000 12345 1,2", "1,000 1,000,000 12,345 1, 2");
    row("years", "1492 1905 1900 2000 2024 1990-1995", "14 92 19 oh 5 19 hundred 2000 20 24 19 90 to 19 95");
    row("clock", "at 10:30: go", "at 10:30: go");
    row("digits that are no number", "007 12345678901234", "007 1 2 3 4 5 6 7 8 9 0 1 2 3 4");
    row("initials", "the U.S.A. is e.g. big", "the |U| |S| |A|. is |e| |g|. big");
    row("long word", QByteArray(10'000, 'a').constData(), QString(48, u'a'));
    row("long number", QByteArray(10'000, '1').constData(), QString("1 ").repeated(24).trimmed());
    row("long number and letters", QByteArray(QByteArray(500, '9') + "x").constData(), QString(12, u'9'));
}

void TestSpokenWords::lineBecomesWords()
{
    QFETCH(QString, line);
    QFETCH(QString, words);
    const auto spoken = SpokenWords::Of(SpeechText::Parse(line));
    QCOMPARE(Written(spoken), words);
    for (const auto &word : spoken.words)
        for (const char character : word.text)
            QVERIFY(character > ' ' && character < 127);
}

void TestSpokenWords::wordsKnowTheirUnits()
{
    const auto spoken = SpokenWords::Of(SpeechText::Parse(R"(🙂 to \map="new york"="NY"\ ! in 1905)"));
    std::vector<std::size_t> units;
    for (const auto &word : spoken.words)
        units.push_back(word.unit);
    QCOMPARE(Written(spoken), QStringLiteral("to new york! in 19 oh 5"));
    QCOMPARE(units, (std::vector<std::size_t>{ 1, 2, 2, 4, 5, 5, 5 }));
}

void TestSpokenWords::pausesFollowTheMarks_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("none") << "one two" << 0 << 0;
    QTest::newRow("comma") << "one, two" << 80 << 200;
    QTest::newRow("colon") << "spell: nite" << 180 << 400;
    QTest::newRow("letters with commas") << "C,A" << 200 << 400;
    QTest::newRow("letters with doubled commas") << "C, ,A, ," << 300 << 500;
    QTest::newRow("words with doubled commas") << "one, , two" << 250 << 500;
}

void TestSpokenWords::pausesFollowTheMarks()
{
    QFETCH(QString, line);
    QFETCH(int, least);
    QFETCH(int, most);
    const auto spoken = SpokenWords::Of(SpeechText::Parse(line));
    QCOMPARE(spoken.words.size(), 2U);
    QVERIFY(spoken.words[0].after.count() >= least);
    QVERIFY(spoken.words[0].after.count() <= most);
}

void TestSpokenWords::sentencesEnd_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("lastWords");
    QTest::newRow("one") << "That's it"
                         << "";
    QTest::newRow("three") << "That's it. Well done! Was it hard? No"
                           << "it done hard";
    QTest::newRow("abbreviations") << "Mr. Smith and Dr. Jones of St. Ives. Yes"
                                   << "Ives";
    QTest::newRow("decimals") << "It is 3.5 long"
                              << "";
    QTest::newRow("other marks") << "one, two; three: four"
                                 << "";
}

void TestSpokenWords::sentencesEnd()
{
    QFETCH(QString, line);
    QFETCH(QString, lastWords);
    QStringList last;
    for (const auto &word : SpokenWords::Of(SpeechText::Parse(line)).words)
        if (word.endsSentence)
            last << QString::fromLatin1(word.text);
    QCOMPARE(last.join(u' '), lastWords);
}

void TestSpokenWords::pausesAskedForArePassedOn()
{
    const auto spoken =
        SpokenWords::Of(SpeechText::Parse(R"(one \pau=300\ 🙂 \pau=200\ \emp\ two \pau=70\ !)"));
    QCOMPARE(spoken.words.size(), 2U);
    QCOMPARE(spoken.words[0].before.count(), 0);
    QCOMPARE(spoken.words[1].before.count(), 500);
    QVERIFY(!spoken.words[0].stressed);
    QVERIFY(spoken.words[1].stressed);
    QCOMPARE(spoken.behind.count(), 70);
}

void TestSpokenWords::pronunciationsAreFound_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QByteArray>("phones");
    QTest::newRow("parrot") << "Peedy" << QByteArray("p iy1 d iy0");
    QTest::newRow("in capitals") << "PEEDY" << QByteArray("p iy1 d iy0");
    QTest::newRow("his") << "Peedy's" << QByteArray("p iy1 d iy0 z");
    QTest::newRow("game's") << "Tumblewick's" << QByteArray("t ah1 m b ax0 l w ih1 k s");
    QTest::newRow("ordinary") << "cat" << QByteArray();
    QTest::newRow("nothing") << "" << QByteArray();
    QTest::newRow("possessive alone") << "'s" << QByteArray();
}

void TestSpokenWords::pronunciationsAreFound()
{
    QFETCH(QString, word);
    QFETCH(QByteArray, phones);
    QCOMPARE(PronunciationOf(word), phones);
}

void TestSpokenWords::everyLetterHasAName()
{
    QSet<QByteArray> names;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        names.insert(LetterName(QLatin1Char(letter)));
        QCOMPARE(LetterName(QLatin1Char(static_cast<char>(letter - 32))), LetterName(QLatin1Char(letter)));
    }
    QCOMPARE(names.size(), 26);
    QVERIFY(!names.contains(QByteArray()));
    QVERIFY(LetterName(u'5').isEmpty());
    QVERIFY(LetterName(u'é').isEmpty());
}

void TestSpokenWords::marksOfOtherScriptsArePausesToo_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("words");
    QTest::newRow("Arabic") << "مرحبا، كيف؟"
                            << "مرحبا, كيف?";
    QTest::newRow("Chinese") << "你好， 世界。"
                             << "你好, 世界.";
    QTest::newRow("Japanese") << "東京、 すごい！ 本当？"
                              << "東京, すごい! 本当?";
    QTest::newRow("Hindi") << "नमस्ते। ठीक"
                           << "नमस्ते. ठीक";
    QTest::newRow("French") << "L'eau, peut-être !"
                            << "L'eau, peut-être!";
    QTest::newRow("a mark that says nothing") << "eau « claire »"
                                              << "eau claire";
    QTest::newRow("signs that would switch the voice") << "a<b>c [[d]]"
                                                       << "a b c d";
}

void TestSpokenWords::marksOfOtherScriptsArePausesToo()
{
    QFETCH(QString, line);
    QStringList words;
    for (const auto &word : SpokenWords::Of(SpeechText::Parse(line), platform::Reading::AsWritten).words)
        words << QString::fromUtf8(word.text + word.punctuation);
    QTEST(words.join(u' '), "words");
}

QTEST_GUILESS_MAIN(TestSpokenWords)
#include "TestSpokenWords.moc"
