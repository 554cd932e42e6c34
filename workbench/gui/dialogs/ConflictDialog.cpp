#include "ConflictDialog.h"

#include "ValueText.h"

#include <nkKernelServices/nkMainWindowService.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Metadata", source);
}

QString valueText(const QVariant &value)
{
    return value.isValid() ? ValueText::of(value) : text("(tag)");
}

QTreeWidget *makeList(QWidget *parent)
{
    QTreeWidget *list = new QTreeWidget(parent);
    list->setObjectName(QStringLiteral("ConflictList"));
    list->setAccessibleName(text("Conflicting entries"));
    list->setHeaderLabels({text("Set"), text("Key"), text("Present value"), text("Pasted value")});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setSelectionMode(QAbstractItemView::NoSelection);
    // Thousands of conflicts are possible; the first screen of them is enough to size the columns.
    list->header()->setResizeContentsPrecision(100);
    return list;
}

} // namespace

ConflictDialog::ConflictDialog(const Conflicts &conflicts, const PastedValues &pasted, QWidget *parent)
    : QDialog(parent), m_list(makeList(this))
{
    setObjectName(QStringLiteral("ConflictDialog"));
    setWindowTitle(text("Paste Entries"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    QLabel *question = new QLabel(
        text("These keys exist already. Replace the present entries, or paste anyway "
             "and keep both?"),
        this);
    question->setTextFormat(Qt::PlainText);
    question->setWordWrap(true);

    QVBoxLayout *column = new QVBoxLayout(this);
    column->addWidget(question);
    column->addWidget(m_list, 1);
    fill(conflicts, pasted);
    addButtons();
    resize(640, 360);
}

ConflictDialog::~ConflictDialog() = default;

void ConflictDialog::fill(const Conflicts &conflicts, const PastedValues &pasted)
{
    for (auto set = conflicts.cbegin(); set != conflicts.cend(); ++set) {
        for (const nkdMetadataEntry &entry : set.value()) {
            addRow(nkdMetadataSet(set.key()), entry, pasted);
        }
    }
    for (int column = 0; column < m_list->columnCount(); ++column) {
        m_list->resizeColumnToContents(column);
        m_list->setColumnWidth(column, qBound(80, m_list->columnWidth(column), 240));
    }
}

void ConflictDialog::addRow(const nkdMetadataSet &set, const nkdMetadataEntry &entry,
                            const PastedValues &pasted)
{
    const QString key = entry.getKey();
    const auto value = pasted.constFind(key);
    const QStringList texts{set.getName(), key, valueText(entry.getValue()),
                            value == pasted.cend() ? QString() : valueText(value.value())};
    QTreeWidgetItem *row = new QTreeWidgetItem(m_list);
    for (int column = 0; column < texts.size(); ++column) {
        const QString line = ValueText::oneLine(texts.at(column));
        row->setText(column, line);
        row->setToolTip(column, ValueText::literal(line));
    }
}

void ConflictDialog::addButtons()
{
    QDialogButtonBox *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton *replace = buttons->addButton(text("Replace"), QDialogButtonBox::AcceptRole);
    QPushButton *keep = buttons->addButton(text("Paste anyway"), QDialogButtonBox::AcceptRole);
    connect(replace, &QPushButton::clicked, this, [this] { finish(nkMetadataGUIUtils::Replace); });
    connect(keep, &QPushButton::clicked, this, [this] { finish(nkMetadataGUIUtils::PasteAnyway); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Cancel)->setDefault(true);
    buttons->button(QDialogButtonBox::Cancel)->setFocus();
    layout()->addWidget(buttons);
}

void ConflictDialog::finish(nkMetadataGUIUtils::ConflictResult answer)
{
    m_answer = answer;
    accept();
}

nkMetadataGUIUtils::ConflictResult ConflictDialog::ask(const Conflicts &conflicts, const PastedValues &pasted)
{
    if (conflicts.isEmpty()) {
        return nkMetadataGUIUtils::Cancel;
    }
    ConflictDialog dialog(conflicts, pasted, nkMainWindowService::the().getMainWindow());
    dialog.exec();
    return dialog.answer();
}

ConflictDialog::PastedValues ConflictDialog::clipboardValues()
{
    PastedValues values;
    for (const nkdMetadataEntry &entry : nkMetadataService::the().getClipboardEntries()) {
        values.insert(entry.getKey(), entry.getValue());
    }
    return values;
}
