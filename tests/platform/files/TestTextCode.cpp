#include "platform/files/TextCode.h"

#include <QTest>

using platform::DecodedLine;
using platform::EncodedLine;

// How a line of text becomes bytes and bytes become a line.
class TestTextCode : public QObject {
    Q_OBJECT
private slots:
    void lineBecomesBytesAndComesBack_data();
    void lineBecomesBytesAndComesBack();
    void foreignBytesAreRead_data();
    void foreignBytesAreRead();
    void everyCharacterComesBack();
    void everyPairOfBytesComesBack();
};

void TestTextCode::lineBecomesBytesAndComesBack_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, const QString &line, const QByteArray &bytes) {
        QTest::newRow(name) << line << bytes;
    };
    row("nothing", "", "");
    row("plain word", "knight_nite", "knight_nite");
    row("accents in one byte each", QString::fromUtf8("Zoë café"), "Zo\xEB caf\xE9");
    row("euro and curly quotes", QString::fromUtf8("€ ‘a’ “b”"),
        "\x80 \x91"
        "a\x92 \x93"
        "b\x94");
    row("dash and dots", QString::fromUtf8("– — …"), "\x96 \x97 \x85");
    row("other letters in UTF-8", QString::fromUtf8("Привет"), QString::fromUtf8("Привет").toUtf8());
    row("one foreign letter takes the whole line along", QString::fromUtf8("é ł"), "\xC3\xA9 \xC5\x82");
    row("emoji", QString::fromUtf8("🦜"), "\xF0\x9F\xA6\x9C");
    row("what would read as UTF-8 is written in UTF-8", QString::fromUtf8("Ã©"), "\xC3\x83\xC2\xA9");
    row("and what would not stays in one byte each", QString::fromUtf8("Ã© é"), "\xC3\xA9 \xE9");
    row("places that the code page leaves open", QString(QChar(0x81)) + QChar(0x9D), "\x81\x9D");
    row("controls that it uses otherwise", QString(QChar(0x80)), "\xC2\x80");
    row("null character", QString(QChar(0)) + "a", QByteArray("\0a", 2));
    row("mark within a file", QString(QChar(0xFEFF)) + "a",
        "\xEF\xBB\xBF"
        "a");
}

void TestTextCode::lineBecomesBytesAndComesBack()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, bytes);
    QCOMPARE(EncodedLine(line), bytes);
    QCOMPARE(DecodedLine(bytes), line);
}

void TestTextCode::foreignBytesAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");
    QTest::newRow("UTF-8 of another editor") << QByteArray("caf\xC3\xA9") << QString::fromUtf8("café");
    QTest::newRow("cut off UTF-8") << QByteArray("caf\xC3") << QString::fromUtf8("cafÃ");
    QTest::newRow("overlong UTF-8") << QByteArray("\xC0\xAF") << QString::fromUtf8("À¯");
    QTest::newRow("surrogate in UTF-8") << QByteArray("\xED\xA0\x80") << QString::fromUtf8("í\u00A0€");
    QTest::newRow("beyond all characters")
        << QByteArray("\xF4\x90\x80\x80") << QString::fromUtf8("ô\u0090€€");
    QTest::newRow("junk") << QByteArray("\xFF\xFE\x00\x01", 4)
                          << QString::fromUtf8("ÿþ") + QChar(0) + QChar(1);
}

void TestTextCode::foreignBytesAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    QCOMPARE(DecodedLine(bytes), line);
}

void TestTextCode::everyCharacterComesBack()
{
    for (char32_t code = 1; code <= 0x10FFFF; code += code < 0x3000 ? 1 : 37) {
        if (code >= 0xD800 && code <= 0xDFFF)
            continue;
        const QString line = QString::fromUcs4(&code, 1) + QString::fromUtf8("é");
        QCOMPARE(DecodedLine(EncodedLine(line)), line);
    }
}

void TestTextCode::everyPairOfBytesComesBack()
{
    // Reading and writing again may change the bytes, but never the text.
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const char bytes[] = { static_cast<char>(first), static_cast<char>(second) };
            const QString line = DecodedLine(QByteArrayView(bytes, 2));
            QVERIFY(!line.isEmpty());
            QCOMPARE(DecodedLine(EncodedLine(line)), line);
        }
    }
}

QTEST_APPLESS_MAIN(TestTextCode)
#include "TestTextCode.moc"
