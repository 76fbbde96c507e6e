#include "shell/Appearance.h"

#include "platform/forms/Backdrop.h"
#include "shell/ControlLooks.h"

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QIcon>
#include <QLabel>
#include <QListView>
#include <QPalette>
#include <QPushButton>
#include <QResource>
#include <QString>
#include <QStyleFactory>
#include <QTextEdit>
#include <QWidget>

#include <algorithm>
#include <iterator>

// Has to stand outside of every namespace.
static void InitialiseResources()
{
    Q_INIT_RESOURCE(tumblewick);
}

namespace tumblewick {

namespace {

constexpr const char *kFontAskedFor = "Comic Sans MS";
constexpr const char *kFontStandingIn = "Comic Neue";

// What a button is to the player; the style sheet colours it by that.
constexpr const char *kMain = "main";     // what one came for
constexpr const char *kSecond = "second"; // the other things to do
constexpr const char *kQuiet = "quiet";   // help, about, and ways out
constexpr const char *kDanger = "danger"; // what takes something away

struct ButtonLook {
    const char *screen; // nullptr: any screen
    const char *control;
    const char *picture;
    const char *rank;
};

// clang-format off
// The first row that fits is used.
constexpr ButtonLook kButtonLooks[] = {
    { "frmMenu1", "cmdPlay", "spelling", kMain },
    { "frmMenu1", "Command3", "quiz", kMain },
    { "frmMenu1", "cmdCreate", "lists", kSecond },
    { "frmMenu1", "cmdSettings", "settings", kSecond },
    { "frmMenu1", "cmdAbout", "about", kQuiet },
    { "frmMenu1", "Command1", "quit", kQuiet },
    { "frmSpell1", "cmdGo", "go", kMain },
    { "frmSpell1", "cmdReplay", "replay", kSecond },
    { "frmSpell1", "cmdPass", "pass", kSecond },
    { "frmSpell1", "cmdHint", "hint", kSecond },
    { "frmSpell1", "cmdNew", "curtain", kMain },
    { "frmSpell1", "cmdAgain", "again", kMain },
    { "frmSpell1", "cmdExit", "quit", kQuiet },
    { "frmSettings", "cmdSave", "save", kMain },
    { "frmSettings", "cmdProperties", "settings", kSecond },
    { "frmAbout", "cmdOK", "ok", kMain },
    { "frmAbout", "Command1", "about", kQuiet },
    { "frmList", "cmdNewSpell", "spelling", kMain },
    { "frmList", "cmdEditSpell", "lists", kSecond },
    { "frmList", "cdmDeleteSpell", "delete", kDanger },
    { "frmList", "cmdImportSpell", "import", kSecond },
    { "frmList", "cmdExportSpell", "export", kSecond },
    { "frmList", "cmdAddQuiz", "quiz", kMain },
    { "frmList", "cmdEditQuiz", "lists", kSecond },
    { "frmList", "cmdDeleteQuiz", "delete", kDanger },
    { "frmList", "cmdImportQuiz", "import", kSecond },
    { "frmList", "cmdExportQuiz", "export", kSecond },
    { "frmSpelling1", "Command1", "add", kMain },
    { "frmSpelling1", "Command2", "delete", kDanger },
    { "frmSpelling1", "Command3", "save", kMain },
    { "frmSpelling1", "Command4", "menu", kSecond },
    { "frmSpelling1", "Command5", "help", kQuiet },
    { "frmQuiz1", "Command2", "menu", kSecond },
    { nullptr, "cmdNext", "next", kMain },
    { nullptr, "cmdOK", "ok", kMain },
    { nullptr, "cmdback", "back", kSecond },
    { nullptr, "cmdMenu", "menu", kSecond },
    { nullptr, "cmdExit", "menu", kSecond },
    { nullptr, "cmdHelp", "help", kQuiet },
    { nullptr, "cmdAdd", "add", kMain },
    { nullptr, "cmdSave", "save", kMain },
    { nullptr, "cmdDel", "delete", kDanger },
    { nullptr, "cmdDelete", "delete", kDanger },
    { nullptr, "cmdTest", "test", kSecond },
    { nullptr, "cmdTestit", "test", kSecond },
    { nullptr, "cmdETest", "test", kSecond },
    { nullptr, "cmdETest2", "test", kSecond },
    { nullptr, "cmdATest", "test", kSecond },
    { nullptr, "cmdATest2", "test", kSecond },
    { nullptr, "cmdTips", "help", kQuiet },
    { nullptr, "cmdImport", "import", kMain },
    { nullptr, "cmdExport", "export", kMain },
};
// clang-format on

struct PanelLook {
    const char *screen, *control, *picture;
};

constexpr PanelLook kPanelLooks[] = {
    { "frmSpell1", "Shape1", "stage" },
    { "frmSpell1", "Shape2", "corner" },
    { "frmSpell1", "Shape3", "sign" },
};

// The style sheet and the drawing of the room go by this name.
QString NameOf(Room room)
{
    switch (room) {
    case Room::Menu:
        return QStringLiteral("menu");
    case Room::SetUp:
        return QStringLiteral("setup");
    case Room::Game:
        return QStringLiteral("game");
    case Room::Study:
        break;
    }
    return QStringLiteral("study");
}

// The buttons of the hub keep their size, so that a wide window has room for an ornament beside them.
QString DrawingOf(const QString &screen, Room room)
{
    return screen == QLatin1String("frmList") ? QStringLiteral("hub") : NameOf(room);
}

const ButtonLook *LookOf(const QString &screen, const QString &control)
{
    const auto found =
        std::find_if(std::begin(kButtonLooks), std::end(kButtonLooks), [&](const ButtonLook &look) {
            return (!look.screen || screen == QLatin1String(look.screen)) &&
                   control == QLatin1String(look.control);
        });
    return found == std::end(kButtonLooks) ? nullptr : found;
}

// Fonts in points change with the desktop's settings, the rectangles they stand in do not.
void FontInPixels(QWidget &widget)
{
    QFont font = widget.font();
    if (font.pointSizeF() <= 0)
        return;
    font.setPixelSize(qRound(font.pointSizeF() * 96 / 72));
    widget.setFont(font);
}

QPalette LampLight()
{
    const QColor ink(0x2a, 0x1b, 0x3d);
    const QColor paper(0xfb, 0xf6, 0xea);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x1b, 0x1d, 0x4d));
    palette.setColor(QPalette::WindowText, paper);
    palette.setColor(QPalette::Base, paper);
    palette.setColor(QPalette::AlternateBase, QColor(0xf3, 0xea, 0xd6));
    palette.setColor(QPalette::Text, QColor(0x2b, 0x25, 0x40));
    palette.setColor(QPalette::PlaceholderText, QColor(0x6b, 0x62, 0x80));
    palette.setColor(QPalette::Button, QColor(0xff, 0xc8, 0x57));
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0xff, 0xc8, 0x57));
    palette.setColor(QPalette::HighlightedText, ink);
    palette.setColor(QPalette::ToolTipBase, paper);
    palette.setColor(QPalette::ToolTipText, ink);
    palette.setColor(QPalette::Link, QColor(0x1d, 0x5f, 0x8a));
    return palette;
}

} // namespace

void ApplyAppearance(QApplication &application)
{
    InitialiseResources();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont::insertSubstitution(QString::fromLatin1(kFontAskedFor), QString::fromLatin1(kFontStandingIn));
    QFont font(QString::fromLatin1(kFontAskedFor));
    font.setPixelSize(20);
    QApplication::setFont(font);
    QApplication::setPalette(LampLight());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icon.svg")));

    const QResource styleSheet(QStringLiteral(":/tumblewick.qss"));
    application.setStyleSheet(QString::fromUtf8(styleSheet.uncompressedData()));
}

void DressWindow(QWidget &window, Room room)
{
    const QString screen = window.objectName();
    window.setProperty("room", NameOf(room));
    platform::Backdrop::Install(window, QStringLiteral(":/rooms/%1.svg").arg(DrawingOf(screen, room)));
    FontInPixels(window);
    for (QWidget *widget : window.findChildren<QWidget *>())
        FontInPixels(*widget);
    for (const PanelLook &look : kPanelLooks)
        if (screen == QLatin1String(look.screen))
            if (auto *panel = window.findChild<QWidget *>(QString::fromLatin1(look.control)))
                platform::Backdrop::Install(
                    *panel, QStringLiteral(":/panels/%1.svg").arg(QLatin1String(look.picture)));
    for (QPushButton *button : window.findChildren<QPushButton *>())
        if (const ButtonLook *look = LookOf(screen, button->objectName())) {
            button->setIcon(QIcon(QStringLiteral(":/buttons/%1.svg").arg(QLatin1String(look->picture))));
            button->setProperty("rank", QString::fromLatin1(look->rank));
            button->setCursor(Qt::PointingHandCursor);
            ScalePicture(*button);
        }
    if (auto *answers = window.findChild<QListView *>(QStringLiteral("lvwAnswer")))
        ShareHeightAmongAnswers(*answers);
    if (auto *scores = window.findChild<QTextEdit *>(QStringLiteral("txtScore")))
        SinkText(*scores);
    if (room == Room::Menu)
        if (auto *title = window.findChild<QLabel *>(QStringLiteral("Label1")))
            LightLetters(*title);
}

} // namespace tumblewick
