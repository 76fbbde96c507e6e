#include "platform/voice/SpeechText.h"

#include <QElapsedTimer>
#include <QTest>

using platform::IsRepeatTag;
using platform::SpeechText;
using platform::SpeechUnit;

// How a line for Speak falls apart into what is said and what is shown.
class TestSpeechText : public QObject {
    Q_OBJECT
private slots:
    void lineIsSaidAndShown_data();
    void lineIsSaidAndShown();
    void lineFallsIntoUnits_data();
    void lineFallsIntoUnits();
    void noNameCanShowTheWordThatIsAsked_data();
    void noNameCanShowTheWordThatIsAsked();
    void repeatTagIsToldApart_data();
    void repeatTagIsToldApart();
    void hugeTextsAreReadAtOnce_data();
    void hugeTextsAreReadAtOnce();
};

void TestSpeechText::lineIsSaidAndShown_data()
{
    QTest::addColumn<QString>("tagged");
    QTest::addColumn<QString>("spoken");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *tagged, const char *spoken, const char *shown) {
        QTest::newRow(name) << QString::fromUtf8(tagged) << QString::fromUtf8(spoken)
                            << QString::fromUtf8(shown);
    };
    // The lines of a game.
    row("first question", R"(Ann, how do you spell: \map="nite"="*****"\?)", "Ann, how do you spell: nite?",
        "Ann, how do you spell: *****?");
    row("question again", R"(How do you spell: \map="nite"="*****"\?)", "How do you spell: nite?",
        "How do you spell: *****?");
    row("first hint", R"(The first letter of \map="cat"="*****"\ is: C.)", "The first letter of cat is: C.",
        "The first letter of ***** is: C.");
    row("second hint", R"(The first 2 letters of \map="cat"="*****"\ are: C,A.)",
        "The first 2 letters of cat are: C,A.", "The first 2 letters of ***** are: C,A.");
    row("word spelled out", R"(\map="C, ,A, ,T, ,"="cat"\)", "C, ,A, ,T, ,", "cat");
    row("test of a pronunciation", R"(\Map="nite"="nite"\)", "nite", "nite");
    // What people type.
    row("nothing", "", "", "");
    row("blanks only", " \t \r\n ", "", "");
    row("many blanks", "  one \t two\r\nthree ", "one two three", "one two three");
    row("blank before the mark", "Hello, Merlin is here !", "Hello, Merlin is here !",
        "Hello, Merlin is here !");
    row("bars", "yes|no", "yes|no", "yes|no");
    row("ampersand, percent, markup", "<b>Tom & Ann</b> 50% &amp;", "<b>Tom & Ann</b> 50% &amp;",
        "<b>Tom & Ann</b> 50% &amp;");
    row("underscores and quotes", R"(a_b "quoted" 'x')", R"(a_b "quoted" 'x')", R"(a_b "quoted" 'x')");
    row("accents", "Zoë et François", "Zoë et François", "Zoë et François");
    row("emoji", "Ann 🦜, hello", "Ann 🦜, hello", "Ann 🦜, hello");
    row("other letters", "Привет 世界", "Привет 世界", "Привет 世界");
    row("equals signs", "2=2 \"=\" x", "2=2 \"=\" x", "2=2 \"=\" x");
    // Backslashes.
    row("name with a backslash", R"(A\B, how do you spell: \map="nite"="*****"\?)",
        "A B, how do you spell: nite?", R"(A\B, how do you spell: *****?)");
    row("name ending in a backslash", R"(Ann\, hello)", "Ann , hello", R"(Ann\, hello)");
    row("tag that a map would close", R"(\Ann\map="nite"="*****"\?)", "Ann nite?", R"(\Ann*****?)");
    row("backslash at the end", "Ann\\", "Ann", "Ann\\");
    row("backslash alone", "\\", "", "\\");
    row("two backslashes", R"(a\\b)", "a b", R"(a\b)");
    row("two backslashes before map", R"(\\map="a"="b"\ c)", R"(map="a"="b" c)", R"(\map="a"="b"\ c)");
    row("three backslashes", R"(\\\)", "", R"(\\)");
    row("path", R"(C:\1\2 x)", "C: 1 2 x", R"(C:\1\2 x)");
    row("path that looks like a tag", R"(C:\Users\Ann 1)", "C:Ann 1", "C:Ann 1");
    // Map tags.
    row("capitals", R"(\MAP="a"="b"\)", "a", "b");
    row("mixed case", R"(\mAp="a"="b"\)", "a", "b");
    row("empty", R"(\Map=""=""\)", "", "");
    row("says nothing", R"(\map=""="*****"\ now)", "now", "***** now");
    row("shows nothing", R"(say \map="this"=""\ now)", "say this now", "say now");
    row("shows nothing, and a mark", R"(say \map="this"=""\? Yes)", "say this? Yes", "say ? Yes");
    row("several words", R"(\map="new york"="New  York"\ city)", "new york city", "New  York city");
    row("quote in what is said", R"(\map="ni"te"="*****"\?)", "ni\"te?", "*****?");
    row("quote at its end", R"(\map="nite""="*****"\?)", "nite\"?", "*****?");
    row("quote at its start", R"(\map=""nite"="*****"\?)", "\"nite?", "*****?");
    row("only a quote", R"(\map="""="*****"\?)", "\"?", "*****?");
    row("equals signs in what is said", R"(\map="a=b"="c=d"\)", "a=b", "c=d");
    row("first divider counts", R"(\map="a"="b"="c"\)", "a", "b\"=\"c");
    row("quote in what is shown", R"(\map="a"="b"c"\ d)", "a d", "b\"c d");
    row("backslash in what is said", R"(\map="ni\te"="*****"\?)", "ni te?", "*****?");
    row("two backslashes in what is shown", R"(\map="a"="b\\c"\)", "a", R"(b\c)");
    row("no backslash at the end", R"(\map="a"="b" c)", "a c", "b c");
    row("no backslash, later quotes", R"(\map="a"="b" c "d" e)", "a e", "b\" c \"d e");
    row("no middle", R"(one \map="secret)", "one", "one");
    row("nothing shown, no end", R"(one \map="secret"=)", "one", "one");
    row("no end", R"(one \map="secret"="shown)", "one", "one");
    row("no quotes", R"(one \map=secret two)", "one two", "one two");
    row("no quotes but closed", R"(one \map=secret\ two)", "one two", "one two");
    row("nothing behind", R"(one \map=)", "one", "one");
    row("map is a word", R"(the map="x" here)", R"(the map="x" here)", R"(the map="x" here)");
    row("two of them", R"(\map="a"="b"\ and \map="c"="d"\.)", "a and c.", "b and d.");
    row("touching", R"(\map="a"="b"\\map="c"="d"\)", "a c", "bd");
    row("word before", R"(pre\map="a"="b"\)", "pre a", "preb");
    row("word behind", R"(\map="a"="b"\post?)", "a post?", "bpost?");
    row("blank before the mark behind a map", R"(\map="a"="b"\ ?)", "a ?", "b ?");
    row("several marks", R"(\map="a"="b"\?!)", "a?!", "b?!");
    // Other tags.
    row("pause", R"(one \pau=500\ two)", "one two", "one two");
    row("pause in a word", R"(one\PAU=500\two)", "one two", "onetwo");
    row("stress", R"(\emp\ really)", "really", "really");
    row("stress in a word", R"(un\emp\believable)", "unbelievable", "unbelievable");
    row("known tags", R"(\rst\\spd=120\\pit=90\\vol=65535\\mrk=7\\lst\hello)", "hello", "hello");
    row("quoted values", R"(\chr="Whisper"\ hush \ctx="E-mail"\)", "hush", "hush");
    row("quoted value with a blank", R"(\chr="Very loud"\ hush)", "hush", "hush");
    row("unknown tags", R"(a \foo\ b \bar=3\ c)", "a b c", "a b c");
    row("blanks are no tag", R"(\ Rst \ x)", "Rst  x", R"(\ Rst \ x)");
    row("blank in a value", R"(\x=1 2\ y)", "x=1 2 y", R"(\x=1 2\ y)");
    row("digits are no tag", R"(\12\ y)", "12 y", R"(\12\ y)");
    row("unclosed tag", R"(\emp now)", "emp now", R"(\emp now)");
    row("unclosed quote", R"(\chr="Whisper\ hush)", "chr=\"Whisper hush", R"(\chr="Whisper\ hush)");
}

void TestSpeechText::lineIsSaidAndShown()
{
    QFETCH(QString, tagged);
    QFETCH(QString, spoken);
    QFETCH(QString, shown);
    const auto text = SpeechText::Parse(tagged);
    const auto said = text.Spoken();
    QCOMPARE(said.simplified(), spoken.simplified());
    QCOMPARE(text.Shown(), shown);
}

void TestSpeechText::lineFallsIntoUnits_data()
{
    QTest::addColumn<QString>("tagged");
    QTest::addColumn<std::vector<SpeechUnit>>("units");
    using Units = std::vector<SpeechUnit>;
    QTest::newRow("nothing") << QString() << Units{};
    QTest::newRow("words") << "Come on !" << Units{ { "Come", "Come" }, { "on", "on" }, { "!", "!" } };
    QTest::newRow("question") << R"(Ann, spell: \map="nite"="*****"\?)"
                              << Units{ { "Ann,", "Ann," },
                                        { "spell:", "spell:" },
                                        { "nite?", "*****?", false, 0, false, true } };
    QTest::newRow("spelled word") << R"(\map="C, ,A, ,T, ,"="cat"\)"
                                  << Units{ { "C, ,A, ,T, ,", "cat", false, 0, false, true } };
    QTest::newRow("empty map") << R"(\map=""=""\)" << Units{ { "", "", false, 0, false, true } };
    QTest::newRow("text touching a map")
        << R"(x\map="a"="b"\y z)"
        << Units{ { "x", "x" }, { "a", "b", true, 0, false, true }, { "y", "y", true }, { "z", "z" } };
    QTest::newRow("pauses add up") << R"(\pau=300\ \pau=200\ a)" << Units{ { "a", "a", false, 500 } };
    QTest::newRow("pause at the end") << R"(a \pau=300\)" << Units{ { "a", "a" }, { "", "", false, 300 } };
    QTest::newRow("odd pauses") << R"(\pau=-5\ \pau=x\ \pau\ \pau=\ a)" << Units{ { "a", "a" } };
    QTest::newRow("huge pauses") << R"(\pau=999999999\ \pau=9999999999999\ \pau=9999\ a)"
                                 << Units{ { "a", "a", false, 10'000 } };
    QTest::newRow("stress holds for one word")
        << R"(a \emp\ b c)" << Units{ { "a", "a" }, { "b", "b", false, 0, true }, { "c", "c" } };
    QTest::newRow("stress on a map") << R"(\emp\\map="a"="b"\)"
                                     << Units{ { "a", "b", false, 0, true, true } };
    QTest::newRow("stress on nothing") << R"(a \emp\)" << Units{ { "a", "a" } };
}

void TestSpeechText::lineFallsIntoUnits()
{
    QFETCH(QString, tagged);
    QFETCH(std::vector<SpeechUnit>, units);
    const auto found = SpeechText::Parse(tagged).units;
    QCOMPARE(found.size(), units.size());
    for (std::size_t index = 0; index < units.size(); ++index) {
        QCOMPARE(found[index].spoken, units[index].spoken);
        QCOMPARE(found[index].shown, units[index].shown);
        QCOMPARE(found[index].joined, units[index].joined);
        QCOMPARE(found[index].pause, units[index].pause);
        QCOMPARE(found[index].stressed, units[index].stressed);
        QCOMPARE(found[index].mapped, units[index].mapped);
    }
}

void TestSpeechText::noNameCanShowTheWordThatIsAsked_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         { "Ann", "A\\B",  "\\",    "\\\\",      "\\\\\\",  "\\x=",     "\\x=\"", "\\x",
           "x\\", "\\emp", "\\map", "\\map=",    "\\map=x", "\\map=\\", "\\pau=", "\\pau=5",
           "\"",  "\"=\"", "=",     "\\a\\b\\c", "\"\\",    "\\chr=\"a" })
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestSpeechText::noNameCanShowTheWordThatIsAsked()
{
    QFETCH(QString, name);
    for (const auto &between : { ", how do you spell: ", " " }) {
        const auto text = SpeechText::Parse(name + between + "\\map=\"secret\"=\"*****\"\\?");
        QVERIFY2(!text.Shown().contains("secret"), qPrintable(text.Shown()));
    }
    const auto asked = SpeechText::Parse(name + ", how do you spell: \\map=\"secret\"=\"*****\"\\?");
    QVERIFY2(asked.Shown().endsWith("how do you spell: *****?"), qPrintable(asked.Shown()));
    QVERIFY2(asked.Spoken().endsWith("how do you spell: secret?"), qPrintable(asked.Spoken()));
}

void TestSpeechText::repeatTagIsToldApart_data()
{
    QTest::addColumn<QString>("tagged");
    QTest::addColumn<bool>("repeats");
    QTest::newRow("plain") << "\\lst\\" << true;
    QTest::newRow("capitals") << "\\LST\\" << true;
    QTest::newRow("blanks round it") << "  \\Lst\\ " << true;
    QTest::newRow("text behind it") << "\\lst\\ hello" << false;
    QTest::newRow("text before it") << "hello \\lst\\" << false;
    QTest::newRow("twice") << "\\lst\\\\lst\\" << false;
    QTest::newRow("unclosed") << "\\lst" << false;
    QTest::newRow("blanks in it") << "\\ lst \\" << false;
    QTest::newRow("nothing") << "" << false;
}

void TestSpeechText::repeatTagIsToldApart()
{
    QFETCH(QString, tagged);
    QFETCH(bool, repeats);
    QCOMPARE(IsRepeatTag(tagged), repeats);
}

void TestSpeechText::hugeTextsAreReadAtOnce_data()
{
    QTest::addColumn<QString>("piece");
    for (const char *piece : { "a", "\\", "\"", "\\a", "\\a\\", "\\x=", "\\map=\"", "\\map=\"a\"=\"",
                               "\\map=", "\"=\"", "\\map=\"a\"=\"b\"\\", "é", " ", "\\pau=5\\", "\\x=\"" })
        QTest::newRow(piece) << QString::fromUtf8(piece);
}

void TestSpeechText::hugeTextsAreReadAtOnce()
{
    QFETCH(QString, piece);
    const auto text = piece.repeated(100'000);
    QElapsedTimer timer;
    timer.start();
    const auto parsed = SpeechText::Parse(text);
    QVERIFY(parsed.Shown().size() <= text.size());
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(TestSpeechText)
#include "TestSpeechText.moc"
