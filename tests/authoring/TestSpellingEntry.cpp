#include "authoring/SpellingEntry.h"

#include <QTest>

using namespace tumblewick;

// What is told about a word and its pronunciation before they go into a list.
class TestSpellingEntry : public QObject {
    Q_OBJECT

private slots:
    void faultsAreCollected_data()
    {
        const QString wordUnderscored = "The spelling for the word cannot contain an underscore. ";
        const QString soundUnderscored = "The pronunciation for the word cannot contain an underscore. ";
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("pronunciation");
        QTest::addColumn<QString>("faults");
        QTest::newRow("a word") << "cat"
                                << ""
                                << "";
        QTest::newRow("both") << "knight"
                              << "nite"
                              << "";
        QTest::newRow("nothing") << ""
                                 << "" << kWordMissing;
        QTest::newRow("pronunciation alone") << ""
                                             << "nite" << kWordMissing;
        QTest::newRow("underscore in the word") << "a_b"
                                                << "" << wordUnderscored;
        QTest::newRow("underscore in the pronunciation") << "ab"
                                                         << "_" << soundUnderscored;
        QTest::newRow("underscore in both") << "_"
                                            << "a_" << wordUnderscored + soundUnderscored;
        QTest::newRow("no word, underscore in the pronunciation") << ""
                                                                  << "a_b" << kWordMissing + soundUnderscored;
        QTest::newRow("blanks are a word") << " "
                                           << ""
                                           << "";
    }
    void faultsAreCollected()
    {
        QFETCH(QString, word);
        QFETCH(QString, pronunciation);
        QTEST(FaultsOfEntry({ word, pronunciation }, kWordMissing), "faults");
    }

    void aListHoldsBothTexts()
    {
        platform::ListItems items;
        items.SetTitles({ "1", "2" });
        const platform::ListItemReference item = items.Add("cat");
        ShowIn(item, { "knight", "nite" });
        QCOMPARE(item->Text(), QString("knight"));
        QCOMPARE(item->SubItem(1), QString("nite"));
        QCOMPARE(WordIn(item).Line(), QString("knight_nite"));
    }

    void theTwoScreensTellOfAMissingWordInTheirOwnWay()
    {
        QCOMPARE(FaultsOfEntry({}, kWordMissing), QString("Please enter the spelling for the word. "));
        QCOMPARE(FaultsOfEntry({}, kNewWordMissing), QString("Please enter the spelling for the new word. "));
    }
};

QTEST_APPLESS_MAIN(TestSpellingEntry)
#include "TestSpellingEntry.moc"
