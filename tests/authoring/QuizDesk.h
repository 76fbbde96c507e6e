#pragma once

#include "authoring/QuizQuestion.h"
#include "authoring/frmEditQuiz.h"
#include "platform/forms/ListView.h"
#include "platform/forms/MultiLineBox.h"
#include "platform/forms/Screen.h"
#include "platform/forms/Twips.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Desk.h"
#include "support/ReportText.h"

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

namespace support {

// Three questions, as the desk tells them and as the file has them.
inline const QString kSpider = QStringLiteral("How many legs has a spider?|Four|Six|Eight|Ten|3");
inline const QString kBees = QStringLiteral("What do bees make?|Milk|Honey|Jam|Tea|2");
inline const QString kSum = QStringLiteral("What is 2+2?|1|2|3|4|4");
inline const QByteArray kSpiderLine = "How many legs has a spider?_Four_Six_Eight_Ten_3_\r\n";
inline const QByteArray kBeesLine = "What do bees make?_Milk_Honey_Jam_Tea_2_\r\n";
inline const QByteArray kSumLine = "What is 2+2?_1_2_3_4_4_\r\n";

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
        for (int field = 0; field < 6; ++field)
            TypeField(prefix, field, texts[field]);
        Settle();
    }
    // Types into one of them alone: 0 is the question, 5 the number.
    void TypeField(const QString &prefix, int field, const QString &text)
    {
        if (field == 0)
            Find<platform::MultiLineBox>(QuestionName(prefix))->SetText(text);
        else
            Type(field == 5 ? CorrectName(prefix) : AnswerName(prefix, field - 1), text);
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
    // Whether the entry stands within the part of the list that is scrolled to.
    bool IsSeen(int index) { return List()->viewport()->rect().contains(PlaceOf(index)); }
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

    // What stands in the boxes of a set for answers and number, when two lines are put into each.
    QStringList TwoLinesInEachBox(const QString &prefix)
    {
        QStringList names{ CorrectName(prefix) };
        for (int index = 0; index < 4; ++index)
            names << AnswerName(prefix, index);
        QStringList texts;
        for (const QString &name : names) {
            Type(name, QStringLiteral("two\r\nlines"));
            texts << Find<QLineEdit>(name)->text();
        }
        texts.removeDuplicates();
        return texts;
    }
    // The four pictures from that number on, none larger than its place.
    QList<QImage> AnswerShapes(int first)
    {
        QList<QImage> shapes;
        for (int number = first; number < first + 4; ++number) {
            const auto *place = Find<QLabel>(QStringLiteral("Image%1").arg(number));
            shapes << place->pixmap(Qt::ReturnByValue).toImage();
            if (!place->rect().contains(shapes.last().rect()))
                QTest::qFail("a picture is cut off", __FILE__, __LINE__);
        }
        return shapes;
    }
    // The columns keep their shares of a list that grows and shrinks.
    void TheColumnsFollowTheirList()
    {
        const int width = platform::Twips(*List()).width;
        const int before = List()->ColumnTwips(1);
        const int last = List()->ColumnTwips(6);
        QWidget *window = platform::WindowInFront();
        const QSize size = window->size();
        for (const double factor : { 1.5, 1.25, 1.0 }) {
            window->resize(static_cast<int>(size.width() * factor), size.height());
            Settle();
            QVERIFY(qAbs(platform::Twips(*List()).width - width * factor) <= 15);
            QVERIFY(qAbs(List()->ColumnTwips(1) - before * factor) <= 45);
            QVERIFY(qAbs(List()->ColumnTwips(6) - last * factor) <= 45);
        }
    }

    // Shows a quiz on the screen that edits it; `report` is the number of the error that is reported, if any.
    void OpenToEdit(int report = 0, const QString &name = QStringLiteral("Zoo"))
    {
        if (report != 0)
            boxes.Expect(ReportText(report));
        tumblewick::frmEditQuiz::Shared().EditFileName = name;
        tumblewick::frmEditQuiz::Shared().Show();
        Settle();
        QVERIFY(tumblewick::frmEditQuiz::Shared().IsActive());
    }
    // What that screen asks before it deletes a question.
    static QString DeleteQuestion(const QString &question)
    {
        return QStringLiteral("Are you sure you want to delete the question '") + question +
               QStringLiteral("' from the list?");
    }
    // Leaves it without being asked anything.
    void LeaveToTheMenu()
    {
        const auto before = boxes.All().size();
        Press(QStringLiteral("cmdMenu"));
        QCOMPARE(boxes.All().size(), before);
        QVERIFY(tumblewick::frmMenu1::Shared().IsActive());
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

// The same with a quiz to edit, `QList/Zoo`, of these three questions.
class QuizToEditDesk : public QuizDesk {
public:
    QuizToEditDesk()
    {
        tumblewick::State().MenuShown = true;
        WriteFile(QStringLiteral("QList/Zoo"), kSpiderLine + kBeesLine + kSumLine);
    }
};

} // namespace support
