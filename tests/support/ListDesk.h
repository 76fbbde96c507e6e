#pragma once

#include "platform/forms/FileListBox.h"
#include "support/Desk.h"

#include <QContextMenuEvent>
#include <QListWidget>
#include <QMenu>
#include <QTest>

namespace support {

// The desk with what the screens that show the files of a folder have in common.
class ListDesk : public Desk {
public:
    // `filesName` is the name of the control that shows them.
    explicit ListDesk(QString filesName) : m_files(std::move(filesName)) {}

    platform::FileListBox *Files() { return Find<platform::FileListBox>(m_files); }
    QStringList Names() { return Names(*Files()); }
    static QStringList Names(const QListWidget &list)
    {
        QStringList names;
        for (int row = 0; row < list.count(); ++row)
            names << list.item(row)->text();
        return names;
    }
    static QPoint PlaceOf(const QListWidget &list, const QString &name)
    {
        const auto found = list.findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (found.size() == 1)
            return list.visualItemRect(found[0]).center();
        QTest::qFail(qPrintable(QStringLiteral("there is no %1 in the list").arg(name)), __FILE__, __LINE__);
        return { -1, -1 };
    }
    void ClickOn(QListWidget &list, const QString &name)
    {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, PlaceOf(list, name));
        Settle();
    }
    void Select(const QString &file)
    {
        ClickOn(*Files(), file);
        QCOMPARE(Files()->FileName(), file);
    }
    // As the mouse does it: the click comes first.
    void DoubleClick(const QString &file)
    {
        Select(file);
        QTest::mouseDClick(Files()->viewport(), Qt::LeftButton, {}, PlaceOf(*Files(), file));
        Settle();
    }
    // Opens the context menu of the selected file and chooses its one line.
    void ChooseFromMenu(const QString &line)
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QCoreApplication::sendEvent(Files(), &event);
        auto *menu = Files()->findChild<QMenu *>();
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().at(0)->text(), line);
        menu->actions().at(0)->trigger();
        Settle();
    }

private:
    const QString m_files;
};

} // namespace support
