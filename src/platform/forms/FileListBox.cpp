#include "platform/forms/FileListBox.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/forms/SelectionKeys.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace platform {

FileListBox::FileListBox(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
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
    List(m_path);
    for (int row = 0; row < count() && !selected.isEmpty(); ++row) {
        if (item(row)->text() == selected) {
            setCurrentRow(row);
            return;
        }
    }
}

void FileListBox::List(const QString &path)
{
    clear();
    m_isListed = false;
    addItems(The().files.FileNames(path));
    m_isListed = true;
}

QString FileListBox::FileName() const
{
    const auto selected = selectedItems();
    return selected.isEmpty() ? QString() : selected.first()->text();
}

void FileListBox::mousePressEvent(QMouseEvent *event)
{
    m_selectedBefore = FileName();
    QListWidget::mousePressEvent(event);
}

void FileListBox::mouseReleaseEvent(QMouseEvent *event)
{
    QListWidget::mouseReleaseEvent(event);
    // Not itemClicked: a press that was dragged on to another file selects that one without it.
    if (event->button() == Qt::LeftButton &&
        (itemAt(event->position().toPoint()) || FileName() != m_selectedBefore))
        emit Clicked();
}

void FileListBox::keyPressEvent(QKeyEvent *event)
{
    const QString before = FileName();
    if (!SelectByKey(*this, *event))
        QListWidget::keyPressEvent(event);
    if (FileName() != before)
        emit Clicked();
}

QItemSelectionModel::SelectionFlags FileListBox::selectionCommand(const QModelIndex &index,
                                                                  const QEvent *event) const
{
    // The base class would let a click beside the files, or with Ctrl, select none.
    const auto usual = QListWidget::selectionCommand(index, event);
    if (!index.isValid() || usual == QItemSelectionModel::NoUpdate)
        return QItemSelectionModel::NoUpdate;
    return QItemSelectionModel::ClearAndSelect;
}

} // namespace platform
