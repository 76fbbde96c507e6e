#include "platform/forms/Resizer.h"

#include "platform/forms/FileListBox.h"
#include "platform/forms/Twips.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

#include <memory>

using platform::Resizer;

namespace {

int FontSize(const QWidget &control)
{
    return QFontInfo(control.font()).pixelSize();
}

void SetFontSize(QWidget &control, int size)
{
    QFont font = control.font();
    font.setPixelSize(size);
    control.setFont(font);
}

} // namespace

// Scaling a window's controls to its size.
class TestResizer : public QObject {
    Q_OBJECT
private slots:
    void init();

    void controlsScaleWithTheWindow_data();
    void controlsScaleWithTheWindow();
    void framesScaleWithWhatStandsInThem();
    void sizesComeFromTheDesignAndDoNotDrift();
    void fontsOfAFrameDoNotReachIntoIt();
    void insidesOfControlsAreLeftAlone();

    void hookSeesThePlanOfEachControl();
    void hookHoldsValues_data();
    void hookHoldsValues();
    void hookMayChangeTheControlItself();

    void typeIsTold_data();
    void typeIsTold();

private:
    std::unique_ptr<QWidget> m_window;
    QPushButton *m_button = nullptr;
    QLabel *m_label = nullptr;
    QGroupBox *m_frame = nullptr;
    QRadioButton *m_option = nullptr;
};

void TestResizer::init()
{
    m_window = std::make_unique<QWidget>();
    m_window->resize(800, 600);
    m_button = new QPushButton("Go", m_window.get());
    m_button->setGeometry(40, 400, 97, 33);
    SetFontSize(*m_button, 12);
    m_label = new QLabel("Choose", m_window.get());
    m_label->setGeometry(101, 51, 201, 25);
    SetFontSize(*m_label, 20);
    m_frame = new QGroupBox(m_window.get());
    m_frame->setGeometry(400, 100, 300, 200);
    SetFontSize(*m_frame, 10);
    m_option = new QRadioButton("A", m_frame);
    m_option->setGeometry(20, 30, 100, 24);
}

void TestResizer::controlsScaleWithTheWindow_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<QRect>("button");
    QTest::addColumn<QRect>("label");
    QTest::addColumn<int>("buttonFont");
    QTest::addColumn<int>("labelFont");
    QTest::newRow("as designed") << QSize(800, 600) << QRect(40, 400, 97, 33) << QRect(101, 51, 201, 25) << 12
                                 << 20;
    QTest::newRow("twice") << QSize(1600, 1200) << QRect(80, 800, 194, 66) << QRect(202, 102, 402, 50) << 24
                           << 40;
    QTest::newRow("1024 x 768") << QSize(1024, 768) << QRect(51, 512, 124, 42) << QRect(129, 65, 257, 32)
                                << 15 << 26;
    QTest::newRow("wide") << QSize(1600, 600) << QRect(80, 400, 194, 33) << QRect(202, 51, 402, 25) << 12
                          << 20;
    QTest::newRow("tall") << QSize(800, 900) << QRect(40, 600, 97, 50) << QRect(101, 77, 201, 38) << 12 << 20;
    QTest::newRow("half") << QSize(400, 300) << QRect(20, 200, 49, 17) << QRect(51, 26, 101, 13) << 6 << 10;
    QTest::newRow("tiny") << QSize(8, 6) << QRect(0, 4, 1, 0) << QRect(1, 1, 2, 0) << 1 << 1;
}

void TestResizer::controlsScaleWithTheWindow()
{
    QFETCH(QSize, window);
    QFETCH(int, buttonFont);
    QFETCH(int, labelFont);
    Resizer resizer(*m_window);
    m_window->resize(window);
    resizer.Apply();
    QTEST(m_button->geometry(), "button");
    QTEST(m_label->geometry(), "label");
    QCOMPARE(FontSize(*m_button), buttonFont);
    QCOMPARE(FontSize(*m_label), labelFont);
}

void TestResizer::framesScaleWithWhatStandsInThem()
{
    auto *plain = new QWidget(m_frame);
    plain->setGeometry(100, 100, 50, 50);
    auto *deep = new QLineEdit(plain);
    deep->setGeometry(10, 10, 20, 20);
    Resizer resizer(*m_window);
    m_window->resize(1600, 1200);
    resizer.Apply();
    QCOMPARE(m_frame->geometry(), QRect(800, 200, 600, 400));
    QCOMPARE(m_option->geometry(), QRect(40, 60, 200, 48));
    QCOMPARE(plain->geometry(), QRect(200, 200, 100, 100));
    QCOMPARE(deep->geometry(), QRect(20, 20, 40, 40));
}

void TestResizer::sizesComeFromTheDesignAndDoNotDrift()
{
    Resizer resizer(*m_window);
    for (const int width : { 801, 333, 1921, 1023, 7, 640 }) {
        m_window->resize(width, width * 3 / 5);
        resizer.Apply();
    }
    m_window->resize(800, 600);
    resizer.Apply();
    QCOMPARE(m_button->geometry(), QRect(40, 400, 97, 33));
    QCOMPARE(m_option->geometry(), QRect(20, 30, 100, 24));
    QCOMPARE(FontSize(*m_label), 20);
}

void TestResizer::fontsOfAFrameDoNotReachIntoIt()
{
    SetFontSize(*m_frame, 10);
    QCOMPARE(FontSize(*m_option), 10); // taken from the frame
    Resizer resizer(*m_window, [](const QString &type, Resizer::Planned &planned, QWidget &control) {
        if (type == "OptionButton")
            planned = Resizer::Present(control);
    });
    m_window->resize(1600, 1200);
    resizer.Apply();
    QCOMPARE(FontSize(*m_frame), 20);
    QCOMPARE(FontSize(*m_option), 10);
    resizer.Apply();
    QCOMPARE(FontSize(*m_option), 10);
}

void TestResizer::insidesOfControlsAreLeftAlone()
{
    auto *list = new QTreeWidget(m_window.get());
    list->setGeometry(10, 10, 100, 100);
    QStringList types;
    Resizer resizer(*m_window, [&](const QString &type, Resizer::Planned &, QWidget &) { types << type; });
    m_window->resize(1600, 1200);
    resizer.Apply();
    QCOMPARE(types, QStringList({ "CommandButton", "Label", "Frame", "OptionButton", "ListView" }));
}

void TestResizer::hookSeesThePlanOfEachControl()
{
    bool seen = false;
    Resizer resizer(*m_window, [&](const QString &type, Resizer::Planned &planned, QWidget &control) {
        if (&control != m_button)
            return;
        seen = true;
        QCOMPARE(type, "CommandButton");
        QCOMPARE(planned.left, 60.0);
        QCOMPARE(planned.top, 600.0);
        QCOMPARE(planned.width, 145.5);
        QCOMPARE(planned.height, 49.5);
        QCOMPARE(planned.fontSize, 18.0);
        QCOMPARE(control.geometry(), QRect(40, 400, 97, 33)); // not changed yet
    });
    m_window->resize(1200, 900);
    resizer.Apply();
    QVERIFY(seen);
}

void TestResizer::hookHoldsValues_data()
{
    QTest::addColumn<bool>("holdsTop");
    QTest::addColumn<QRect>("button");
    QTest::newRow("all but the left") << true << QRect(80, 400, 97, 33);
    QTest::newRow("size only") << false << QRect(80, 800, 97, 33);
}

void TestResizer::hookHoldsValues()
{
    QFETCH(bool, holdsTop);
    Resizer resizer(*m_window, [&](const QString &type, Resizer::Planned &planned, QWidget &control) {
        if (type != "CommandButton")
            return;
        const Resizer::Planned present = Resizer::Present(control);
        if (holdsTop)
            planned.top = present.top;
        planned.width = present.width;
        planned.height = present.height;
        planned.fontSize = present.fontSize;
    });
    m_window->resize(1600, 1200);
    resizer.Apply();
    resizer.Apply();
    QTEST(m_button->geometry(), "button");
    QCOMPARE(FontSize(*m_button), 12);
    QCOMPARE(m_label->geometry(), QRect(202, 102, 402, 50));
    QCOMPARE(FontSize(*m_label), 40);
}

void TestResizer::hookMayChangeTheControlItself()
{
    // Each of two columns gets half of the list, whole twips.
    auto *list = new QTreeWidget(m_window.get());
    list->setColumnCount(2);
    list->setGeometry(10, 10, 335, 100);
    int half = 0;
    Resizer resizer(*m_window, [&](const QString &type, Resizer::Planned &, QWidget &control) {
        if (type == "ListView")
            half = platform::Twips(control).width / 2;
    });
    resizer.Apply();
    QCOMPARE(half, 2512); // 5025 halved
    m_window->resize(1600, 1200);
    resizer.Apply();
    QCOMPARE(half, 2512); // it is called before the change
    QCOMPARE(list->width(), 670);
    resizer.Apply();
    QCOMPARE(half, 5025);
}

void TestResizer::typeIsTold_data()
{
    QTest::addColumn<std::function<QWidget *()>>("make");
    QTest::addColumn<QString>("type");
    const auto row = [](const char *name, std::function<QWidget *()> make, const char *type) {
        QTest::newRow(name) << std::move(make) << QString(type);
    };
    row(
        "button", [] { return new QPushButton; }, "CommandButton");
    row(
        "label", [] { return new QLabel("text"); }, "Label");
    row(
        "empty label", [] { return new QLabel; }, "Label");
    row(
        "picture",
        [] {
            auto *label = new QLabel;
            label->setPixmap(QPixmap(4, 4));
            return label;
        },
        "Image");
    row(
        "line", [] { return new QLineEdit; }, "TextBox");
    row(
        "text", [] { return new QTextEdit; }, "RichTextBox");
    row(
        "group", [] { return new QGroupBox; }, "Frame");
    row(
        "list", [] { return new QListWidget; }, "ListView");
    row(
        "list with columns", [] { return new QTreeWidget; }, "ListView");
    row(
        "files", [] { return new platform::FileListBox; }, "FileListBox");
    row(
        "option", [] { return new QRadioButton; }, "OptionButton");
    row(
        "container", [] { return new QWidget; }, "Frame");
    row(
        "bare frame", [] { return new QFrame; }, "Frame");
    row(
        "shape",
        [] {
            auto *frame = new QFrame;
            frame->setFrameShape(QFrame::Box);
            return frame;
        },
        "Shape");
    row(
        "property",
        [] {
            auto *frame = new QFrame;
            frame->setProperty("controlType", "Shape");
            return frame;
        },
        "Shape");
    row(
        "property of a label",
        [] {
            auto *label = new QLabel;
            label->setProperty("controlType", "Image");
            return label;
        },
        "Image");
    row(
        "something else", [] { return new QComboBox; }, "QComboBox");
}

void TestResizer::typeIsTold()
{
    QFETCH(std::function<QWidget *()>, make);
    QFETCH(QString, type);
    const std::unique_ptr<QWidget> control(make());
    QCOMPARE(Resizer::TypeOf(*control), type);
}

QTEST_MAIN(TestResizer)
#include "TestResizer.moc"
