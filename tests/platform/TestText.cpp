#include "platform/Text.h"
#include "support/NumberRaised.h"

#include <QTest>

using namespace platform;

// Text counted from 1, and numbers written as text.
class TestText : public QObject {
    Q_OBJECT
private slots:
    void textIsFound_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("place");
        QTest::newRow("at the start") << 1 << "a_b_c"
                                      << "a" << 1;
        QTest::newRow("further on") << 1 << "a_b_c"
                                    << "_" << 2;
        QTest::newRow("from its own place") << 2 << "a_b_c"
                                            << "_" << 2;
        QTest::newRow("behind the first") << 3 << "a_b_c"
                                          << "_" << 4;
        QTest::newRow("not there") << 1 << "a_b_c"
                                   << "d" << 0;
        QTest::newRow("only before") << 5 << "a_b_c"
                                     << "_" << 0;
        QTest::newRow("start behind the end") << 6 << "a_b_c"
                                              << "c" << 0;
        QTest::newRow("in nothing") << 1 << ""
                                    << "a" << 0;
        QTest::newRow("nothing, where it begins") << 3 << "a_b_c"
                                                  << "" << 3;
        QTest::newRow("letter case counts") << 1 << "a_b_c"
                                            << "B" << 0;
    }
    void textIsFound()
    {
        QFETCH(int, start);
        QFETCH(QString, text);
        QFETCH(QString, what);
        QTEST(InStr(start, text, what), "place");
    }

    void partsAreTaken()
    {
        QCOMPARE(Left("knight", 2), QString("kn"));
        QCOMPARE(Left("knight", 0), QString());
        QCOMPARE(Left("knight", 60), QString("knight"));
        QCOMPARE(Mid("knight", 3, 2), QString("ig"));
        QCOMPARE(Mid("knight", 6, 9), QString("t"));
        QCOMPARE(Mid("knight", 7, 1), QString());
        QCOMPARE(Mid("knight", 2, 0), QString());
        QCOMPARE(Mid("knight", 3), QString("ight"));
        QCOMPARE(Mid("knight", 60), QString());
    }

    void placesThatCannotBeAreRefused()
    {
        QCOMPARE(support::NumberRaised([] { InStr(0, "a", "a"); }), 5);
        QCOMPARE(support::NumberRaised([] { InStr(-1, "a", "a"); }), 5);
        QCOMPARE(support::NumberRaised([] { Left("a", -1); }), 5);
        QCOMPARE(support::NumberRaised([] { Mid("a", 0, 1); }), 5);
        QCOMPARE(support::NumberRaised([] { Mid("a", 1, -1); }), 5);
        QCOMPARE(support::NumberRaised([] { Mid("a", 0); }), 5);
    }

    void numbersAreRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("raised");
        QTest::newRow("plain") << "3" << 3 << 0;
        QTest::newRow("with blanks") << " 12 " << 12 << 0;
        QTest::newRow("half to even, down") << "2.5" << 2 << 0;
        QTest::newRow("half to even, up") << "3.5" << 4 << 0;
        QTest::newRow("below nothing") << "-2.5" << -2 << 0;
        QTest::newRow("more than half") << "2.51" << 3 << 0;
        QTest::newRow("hardly less than half") << "0.49999999999999994" << 0 << 0;
        QTest::newRow("largest") << "32767" << 32767 << 0;
        QTest::newRow("smallest") << "-32768" << -32768 << 0;
        QTest::newRow("too large") << "32768" << 0 << 6;
        QTest::newRow("rounded to too large") << "32767.5" << 0 << 6;
        QTest::newRow("nothing") << "" << 0 << 13;
        QTest::newRow("blanks") << "  " << 0 << 13;
        QTest::newRow("a word") << "three" << 0 << 13;
        QTest::newRow("a number and more") << "3rd" << 0 << 13;
    }
    void numbersAreRead()
    {
        QFETCH(QString, text);
        QFETCH(int, number);
        int read = 0;
        const qint32 raised = support::NumberRaised([&] { read = ToInteger16(text); });
        QTEST(int(raised), "raised");
        QCOMPARE(read, number);
    }
};

QTEST_APPLESS_MAIN(TestText)
#include "TestText.moc"
