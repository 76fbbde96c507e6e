#include "platform/forms/FileListBox.h"

#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/forms/CutText.h"
#include "platform/forms/SelectionKeys.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace platform {

FileListBox::FileListBox(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    CutLongTexts(*this);
}

void FileListBox::SetPath(const QString &path)
{
    if (m_isListed && path == m_path)
        return;
    List(path);
    m_path = path;
}

void FileListBox::Refresh()
{
    const QString selected = FileName();
    const int place = currentRow();
    const int scrolled = verticalScrollBar()->value();
    List(m_path);
    // The list stays where the user was in it, also when that file has gone.
    setCurrentRow(std::min(place, count() - 1), QItemSelectionModel::NoUpdate);
    for (int row = 0; row < count() && !selected.isEmpty(); ++row) {
        if (item(row)->text() == selected) {
            setCurrentRow(row);
            break;
        }
    }
    doItemsLayout();
    verticalScrollBar()->setValue(scrolled);
}

void FileListBox::List(const QString &path)
{
    clear();
    m_isListed = false;
    QStringList names = The().files.FileNames(path);
    if (m_leavesOutHidden)
        names.removeIf([](const QString &name) { return name.startsWith(u'.'); });
    addItems(names);
    m_isListed = true;
}

QString FileListBox::FileName() const
{
    const auto selected = selectedItems();
    return selected.isEmpty() ? QString() : selected.first()->text();
}

void FileListBox::SetDoubleClickButton(QPushButton &button)
{
    m_doubleClickButton = &button;
    SetMenuButton(button);
}

void FileListBox::SetDeleteButton(QPushButton &button)
{
    m_deleteButton = &button;
    SetMenuButton(button);
}

void FileListBox::mousePressEvent(QMouseEvent *event)
{
    m_isDoubleClick = false;
    m_selectedBefore = FileName();
    QListWidget::mousePressEvent(event);
    // The left button is told when it is let go.
    if (event->button() != Qt::LeftButton && FileName() != m_selectedBefore)
        emit Clicked();
}

void FileListBox::mouseReleaseEvent(QMouseEvent *event)
{
    QListWidget::mouseReleaseEvent(event);
    // Not itemClicked: a press that was dragged on to another file selects that one without it.
    if (event->button() == Qt::LeftButton && !std::exchange(m_isDoubleClick, false) &&
        (itemAt(event->position().toPoint()) || FileName() != m_selectedBefore))
        emit Clicked();
}

void FileListBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The first click has selected it.
    const QListWidgetItem *const file = itemAt(event->position().toPoint());
    const bool isOnIt = file && file->isSelected();
    QListWidget::mouseDoubleClickEvent(event);
    if (event->button() != Qt::LeftButton || !isOnIt || !m_doubleClickButton)
        return;
    m_isDoubleClick = true;
    m_doubleClickButton->click();
}

void FileListBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete && m_deleteButton && !FileName().isEmpty() && !event->isAutoRepeat()) {
        m_deleteButton->click();
        return;
    }
    const QString before = FileName();
    if (!SelectByKey(*this, *event))
        QListWidget::keyPressEvent(event);
    if (FileName() != before)
        emit Clicked();
}

void FileListBox::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    // Beside the files there is nothing to do anything with.
    if (!m_menuButton || !m_menuButton->isEnabled() || FileName().isEmpty() ||
        (!byKey && !itemAt(event->pos())))
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(m_menuButton->text()), &QAction::triggered, m_menuButton,
            [button = m_menuButton] { button->click(); });
    menu->popup(byKey ? viewport()->mapToGlobal(visualItemRect(currentItem()).center()) : event->globalPos());
}

QItemSelectionModel::SelectionFlags FileListBox::selectionCommand(const QModelIndex &index,
                                                                  const QEvent *event) const
{
    return KeptSelection(index, QListWidget::selectionCommand(index, event));
}

} // namespace platform
