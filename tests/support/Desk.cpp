#include "support/Desk.h"

#include "game/frmSpell1.h"
#include "platform/forms/ScreenStack.h"
#include "shell/SharedState.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPixmap>
#include <QTest>

using namespace tumblewick;

namespace support {

Desk::Desk()
{
    platform::InstallServices(&services);
    process.SetApplicationFolder(folder.path());
    QDir(folder.path()).mkdir(QStringLiteral("Lists"));
    QDir(folder.path()).mkdir(QStringLiteral("QList"));
    QDir(folder.path()).mkdir(QStringLiteral("Home"));
    drives.all[0].path = folder.filePath(QStringLiteral("Home"));
    QPixmap icon(8, 8);
    icon.fill(Qt::blue);
    icon.save(folder.filePath(QStringLiteral("TWicon4.bmp")), "BMP");
    WriteFile(QStringLiteral("Set"), "No Intro\r\n\r\n");
    WriteFile(QStringLiteral("Lintro"), "0");
    State().Reset();
}

Desk::~Desk()
{
    platform::ForgetScreens();
    State().Reset();
    platform::InstallServices(nullptr);
}

void Desk::WriteFile(const QString &path, const QByteArray &content)
{
    QFile file(folder.filePath(path));
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    file.write(content);
}

QByteArray Desk::Content(const QString &path) const
{
    QFile file(folder.filePath(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

QStringList Desk::OnDisk(const QString &path) const
{
    return QDir(folder.filePath(path)).entryList(QDir::Files, QDir::Name);
}

void Desk::WriteLines(const QString &listFolder, const QString &name, const QStringList &lines)
{
    QByteArray content;
    for (const QString &line : lines)
        content += line.toUtf8() + "\r\n";
    WriteFile(listFolder + QLatin1Char('/') + name, content);
}

void Desk::WriteSpelling(const QString &name, const QStringList &lines)
{
    WriteLines(QStringLiteral("Lists"), name, lines);
}

void Desk::WriteQuiz(const QString &name, const QStringList &lines)
{
    WriteLines(QStringLiteral("QList"), name, lines);
}

void Desk::BeginSpelling(const QStringList &players, const QStringList &lines)
{
    WriteSpelling(QStringLiteral("Animals"), lines);
    BeginGame(kSpellingMode, QStringLiteral("Lists"), players);
}

void Desk::BeginQuiz(const QStringList &players, const QStringList &lines)
{
    WriteQuiz(QStringLiteral("Animals"), lines);
    BeginGame(kQuizMode, QStringLiteral("QList"), players);
}

void Desk::BeginGame(const QString &mode, const QString &listFolder, const QStringList &players)
{
    SharedState &state = State();
    state.GameMode = mode;
    state.NumPlayers = static_cast<int>(players.size());
    state.Players = Players(players);
    state.ListName = QStringLiteral("Animals");
    state.ListPath = folder.path() + QLatin1Char('\\') + listFolder + QStringLiteral("\\Animals");
    frmSpell1::Shared().Show();
    Settle();
}

void Desk::After(std::chrono::milliseconds delay, std::function<void()> work)
{
    m_later.push_back(time.After(delay, std::move(work)));
}

QWidget *Desk::FindWidget(const QString &name)
{
    const platform::Screen *front = platform::ScreenStack::Instance().Front();
    if (front && front->Window()) {
        if (auto *widget = front->Window()->findChild<QWidget *>(name))
            return widget;
    }
    QTest::qFail(qPrintable(QStringLiteral("there is no control %1").arg(name)), __FILE__, __LINE__);
    return nullptr;
}

QString Desk::Focus()
{
    const platform::Screen *front = platform::ScreenStack::Instance().Front();
    const QWidget *focus = front && front->Window() ? front->Window()->focusWidget() : nullptr;
    return focus ? focus->objectName() : QString();
}

void Desk::Press(const QString &button)
{
    auto *control = Find<QAbstractButton>(button);
    QVERIFY2(control, qPrintable(button));
    QVERIFY2(control->isVisible(), qPrintable(button + QStringLiteral(" is hidden")));
    QVERIFY2(control->isEnabled(), qPrintable(button + QStringLiteral(" is disabled")));
    control->click();
    Settle();
}

void Desk::Type(const QString &box, const QString &text)
{
    auto *control = Find<QLineEdit>(box);
    QVERIFY2(control && control->isVisible(), qPrintable(box));
    control->setText(text);
}

QString Desk::States(const QStringList &buttons)
{
    QStringList states;
    for (const QString &name : buttons) {
        const auto *control = Find<QAbstractButton>(name);
        if (!control)
            continue;
        states << name + (control->isHidden()    ? QStringLiteral(" hidden")
                          : control->isEnabled() ? QStringLiteral(" enabled")
                                                 : QStringLiteral(" disabled"));
    }
    return states.join(QStringLiteral(", "));
}

} // namespace support
