#include "ImportReportDialog.h"

#include "gui/dialogs/ValueText.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

using interchange::ImportReport;

namespace {

constexpr QSize StartSize(880, 440);
constexpr int PlaceWidth = 300;
constexpr int Gap = 16;

QLabel *plainLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

ImportReportDialog::ImportReportDialog(const ImportReport &report, const QString &fileName, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("ImportReport"));
    setWindowTitle(tr("Import Report"));
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    layout->addWidget(makeHeading(fileName));
    layout->addWidget(plainLabel(report.summary() + QLatin1Char('.'), this));
    if (report.isClean()) {
        layout->addStretch();
    } else {
        addList(report);
        layout->addWidget(m_list, 1);
        layout->addWidget(plainLabel(
            tr("Nothing of this is lost: saving leaves in the file what it does not know."), this));
        resize(StartSize);
    }
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

/// A name without a place to break it at must not make the box wider than the display.
QLabel *ImportReportDialog::makeHeading(const QString &fileName)
{
    auto *heading = new QLabel(this);
    heading->setTextFormat(Qt::PlainText);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    heading->setText(QFontMetrics(bold).elidedText(fileName, Qt::ElideMiddle, StartSize.width() - 3 * Gap));
    heading->setAccessibleName(fileName);
    heading->setToolTip(ValueText::literal(fileName));
    return heading;
}

void ImportReportDialog::addList(const ImportReport &report)
{
    m_list = new QTreeWidget(this);
    m_list->setAccessibleName(tr("Items of the report"));
    m_list->setHeaderLabels({tr("What"), tr("Where"), tr("Why")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAlternatingRowColors(true);
    m_list->setTextElideMode(Qt::ElideRight);
    m_left = capacity;
    addItems(tr("Refused"), report.refused());
    addItems(tr("Converted"), report.converted());
    addItems(tr("Left untouched"), report.untouched());
    addItems(tr("Read around"), report.notes());
    const int count = report.refused().size() + report.converted().size() + report.untouched().size()
                      + report.notes().size();
    if (count > capacity) {
        m_list->addTopLevelItem(new QTreeWidgetItem({QString(), tr("and %1 more").arg(count - capacity)}));
    }
    m_list->resizeColumnToContents(0);
    m_list->header()->resizeSection(0, m_list->columnWidth(0) + Gap);
    m_list->header()->resizeSection(1, PlaceWidth);
}

void ImportReportDialog::addItems(const QString &what, const QVector<ImportReport::Item> &items)
{
    QList<QTreeWidgetItem *> rows;
    for (const ImportReport::Item &item : items.mid(0, m_left)) {
        auto *row = new QTreeWidgetItem({what, item.path, ImportReport::text(item)});
        row->setToolTip(1, ValueText::literal(item.path));
        row->setToolTip(2, ValueText::literal(ImportReport::text(item)));
        rows.append(row);
    }
    m_left -= rows.size();
    m_list->addTopLevelItems(rows);
}
