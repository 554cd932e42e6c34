#include "MoveTargetDialog.h"

#include "SceneObjectModel.h"
#include "SceneObjectView.h"

#include "kernel/document/Document.h"

#include <nkQt4Ext/QNKSearchBox.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using kernel::Document;

namespace {

constexpr QSize startSize(420, 480);

} // namespace

MoveTargetDialog::MoveTargetDialog(EditorModule module, const QList<quint64> &moved, QWidget *parent)
    : QDialog(parent),
      m_module(module),
      m_moved(moved),
      m_model(new SceneObjectModel(module, this)),
      m_view(new SceneObjectView(m_model, this)),
      m_search(new QNKSearchBox(this))
{
    setWindowTitle(tr("Move To"));
    m_view->setAccessibleName(tr("Objects to move below"));
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setDragDropMode(QAbstractItemView::NoDragDrop);
    m_search->setPlaceholderText(tr("Search"));
    m_search->lineEdit()->setAccessibleName(tr("Search objects to move below"));
    createButtons();
    layOut();
    connect(m_search, &QNKSearchBox::searchChanged, m_model, &SceneObjectModel::search);
    connect(m_search, &QNKSearchBox::searchDisabled, m_model, [this] { m_model->search(QString()); });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &MoveTargetDialog::updateButton);
    connect(m_model, &SceneObjectModel::followed, this, &MoveTargetDialog::updateButton);
    connect(m_view, &QAbstractItemView::doubleClicked, this, &MoveTargetDialog::chooseCurrent);
    updateButton();
    resize(startSize);
    m_view->setFocus(Qt::OtherFocusReason);
}

MoveTargetDialog::~MoveTargetDialog() = default;

void MoveTargetDialog::createButtons()
{
    m_move = new QPushButton(tr("&Move"), this);
    m_move->setDefault(true);
    m_topLevel = new QPushButton(tr("Move to &Top Level"), this);
    m_topLevel->setAutoDefault(false);
    connect(m_move, &QPushButton::clicked, this, &MoveTargetDialog::chooseCurrent);
    connect(m_topLevel, &QPushButton::clicked, this, [this] {
        m_target = 0;
        accept();
    });
}

void MoveTargetDialog::layOut()
{
    auto *label = new QLabel(m_module == EditorModule::Material
                                 ? tr("Move what is selected into this &group:")
                                 : tr("Move what is selected &below:"),
                             this);
    label->setBuddy(m_view);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_topLevel, QDialogButtonBox::ResetRole);
    buttons->addButton(m_move, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(m_search);
    column->addWidget(m_view);
    column->addWidget(buttons);
}

bool MoveTargetDialog::mayBeTarget(quint64 id) const
{
    const Document &document = Document::the();
    if (document.typeOf(id) == nkObjectType::Null
        || (m_module == EditorModule::Material && document.typeOf(id) != nkObjectType::MaterialGroup)) {
        return false;
    }
    for (quint64 at = id; at != 0; at = document.parentOf(at)) {
        if (m_moved.contains(at)) {
            return false;
        }
    }
    return true;
}

void MoveTargetDialog::updateButton()
{
    m_move->setEnabled(mayBeTarget(m_model->idOf(m_view->selectionModel()->selectedRows().value(0))));
}

void MoveTargetDialog::chooseCurrent()
{
    const quint64 id = m_model->idOf(m_view->selectionModel()->selectedRows().value(0));
    if (mayBeTarget(id)) {
        m_target = id;
        accept();
    }
}
