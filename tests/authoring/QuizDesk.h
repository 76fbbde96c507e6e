#pragma once

#include "authoring/QuizQuestion.h"
#include "platform/forms/ListView.h"
#include "platform/forms/MultiLineBox.h"
#include "platform/forms/Screen.h"
#include "shell/frmAbout.h"
#include "support/Desk.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest>

namespace support {

// Two questions, as the desk tells them and as the file has them.
inline const QString kSpider = QStringLiteral("How many legs has a spider?|Four|Six|Eight|Ten|3");
inline const QString kBees = QStringLiteral("What do bees make?|Milk|Honey|Jam|Tea|2");
inline const QByteArray kSpiderLine = "How many legs has a spider?_Four_Six_Eight_Ten_3_\r\n";
inline const QByteArray kBeesLine = "What do bees make?_Milk_Honey_Jam_Tea_2_\r\n";

// The desk with what both screens for quizzes have in common.
class QuizDesk : public Desk {
public:
    // The six fields of a question, split at the bars.
    static QStringList Fields(const QString &fields) { return fields.split(QLatin1Char('|')); }

    // Types into six boxes; `prefix` tells the set: "" on the screen that makes a quiz, "E" or "A" on the one
    // that edits it.
    void TypeQuestion(const QString &prefix, const QString &fields)
    {
        const QStringList texts = Fields(fields);
        Find<platform::MultiLineBox>(QuestionName(prefix))->SetText(texts[0]);
        for (int index = 0; index < 4; ++index)
            Type(AnswerName(prefix, index), texts[index + 1]);
        Type(CorrectName(prefix), texts[5]);
        Settle();
    }
    // What stands in them.
    QString Typed(const QString &prefix)
    {
        QStringList texts{ Find<platform::MultiLineBox>(QuestionName(prefix))->Text() };
        for (int index = 0; index < 4; ++index)
            texts << Find<QLineEdit>(AnswerName(prefix, index))->text();
        texts << Find<QLineEdit>(CorrectName(prefix))->text();
        return texts.join(QLatin1Char('|'));
    }

    platform::ListView *List() { return Find<platform::ListView>(QStringLiteral("lvwList")); }
    // All entries, in the order of the list.
    QStringList Entries()
    {
        QStringList entries;
        for (int index = 1; index <= List()->Count(); ++index) {
            QStringList fields{ List()->Item(index)->Text() };
            for (int number = 1; number <= tumblewick::QuizEntry::kSubItems; ++number)
                fields << List()->Item(index)->SubItem(number);
            entries << fields.join(QLatin1Char('|'));
        }
        return entries;
    }
    void ClickEntry(int index)
    {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, PlaceOf(index));
        Settle();
    }
    // As the mouse does it: the click comes first.
    void DoubleClickEntry(int index)
    {
        ClickEntry(index);
        QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, PlaceOf(index));
        Settle();
    }
    void KeyOnList(Qt::Key key)
    {
        QTest::keyClick(List(), key);
        Settle();
    }
    // The lines of the menu that the list shows; `choose` presses the one with that number.
    QStringList MenuOfList(int choose = -1)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, PlaceOf(1),
                                List()->viewport()->mapToGlobal(PlaceOf(1)));
        QApplication::sendEvent(List()->viewport(), &event);
        QStringList lines;
        auto *menu = List()->findChild<QMenu *>();
        if (!menu)
            return lines;
        const QList<QAction *> actions = menu->actions();
        for (const QAction *action : actions)
            lines << action->text();
        if (choose >= 0)
            actions.at(choose)->trigger();
        delete menu;
        Settle();
        return lines;
    }

    // Another screen of the program comes to the front and goes again.
    void CoverAndUncover()
    {
        tumblewick::frmAbout::Shared().Show();
        Settle();
        tumblewick::frmAbout::Shared().Unload();
        Settle();
    }

private:
    QPoint PlaceOf(int index) const
    {
        auto *list = platform::WindowInFront()->findChild<platform::ListView *>(QStringLiteral("lvwList"));
        return list->visualRect(list->model()->index(index - 1, 0)).center();
    }
    static QString QuestionName(const QString &prefix)
    {
        return prefix.isEmpty() ? QStringLiteral("txtQuest")
                                : QStringLiteral("txt") + prefix + QStringLiteral("Question");
    }
    static QString AnswerName(const QString &prefix, int index)
    {
        return QStringLiteral("txt%1Answ_%2").arg(prefix).arg(index);
    }
    static QString CorrectName(const QString &prefix)
    {
        return QStringLiteral("txt") + prefix + QStringLiteral("Correct");
    }
};

} // namespace support
