#include "platform/forms/SelectionKeys.h"

#include <QKeyEvent>
#include <QListWidget>

#include <algorithm>

namespace platform {

namespace {

class SelectionKeysFilter : public QObject {
public:
    explicit SelectionKeysFilter(QListWidget &list) : QObject(&list), m_list(list)
    {
        list.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        return event->type() == QEvent::KeyPress && SelectByKey(m_list, *static_cast<QKeyEvent *>(event));
    }

private:
    QListWidget &m_list;
};

} // namespace

bool SelectByKey(QListWidget &list, const QKeyEvent &event)
{
    const int key = event.key();
    if (key != Qt::Key_Up && key != Qt::Key_Down && key != Qt::Key_Space)
        return false;
    if (list.count() == 0 || !list.selectedItems().isEmpty())
        return false;
    list.setCurrentRow(std::max(list.currentRow(), 0), QItemSelectionModel::ClearAndSelect);
    return true;
}

QItemSelectionModel::SelectionFlags KeptSelection(const QModelIndex &index,
                                                  QItemSelectionModel::SelectionFlags usual)
{
    if (!index.isValid() || usual == QItemSelectionModel::NoUpdate)
        return QItemSelectionModel::NoUpdate;
    return QItemSelectionModel::ClearAndSelect | (usual & QItemSelectionModel::Rows);
}

void InstallSelectionKeys(QListWidget &list)
{
    new SelectionKeysFilter(list); // owned by the list
}

} // namespace platform
