#include "QueryHelp.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Metadata", source);
}

struct Example
{
    const char *query;
    const char *meaning;
};

const Example Examples[] = {
    {"red", QT_TRANSLATE_NOOP("Metadata", "The word in a key, a value or the set's name")},
    {"red large", QT_TRANSLATE_NOOP("Metadata", "Both words, each in any place of the set")},
    {"\"dark red\"", QT_TRANSLATE_NOOP("Metadata", "These words side by side")},
    {"red or blue", QT_TRANSLATE_NOOP("Metadata", "One of them; brackets group")},
    {"not red", QT_TRANSLATE_NOOP("Metadata", "Sets without the word")},
    {"key:colour", QT_TRANSLATE_NOOP("Metadata", "In a key")},
    {"value:red", QT_TRANSLATE_NOOP("Metadata", "In a value")},
    {"set:paint", QT_TRANSLATE_NOOP("Metadata", "In the set's name")},
    {"object:door", QT_TRANSLATE_NOOP("Metadata", "In the name of an object that carries the set")},
    {"type:Date", QT_TRANSLATE_NOOP("Metadata", "An entry of this type; type:Tag for tags")},
    {"width >= 2.5", QT_TRANSLATE_NOOP("Metadata", "A value compared: = != < <= > >=")},
    {"built < 2024-05-01", QT_TRANSLATE_NOOP("Metadata", "A date, or a time, compared")},
    {"/^part \\d+$/", QT_TRANSLATE_NOOP("Metadata", "A regular expression")},
};

} // namespace

QueryHelp::QueryHelp(QWidget *parent) : QFrame(parent, Qt::Popup), m_examples(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("QueryHelp"));
    setFrameShape(QFrame::StyledPanel);
    setAccessibleName(text("Search examples"));
    QLabel *title = new QLabel(text("Choose an example to put it into the search field."), this);
    title->setTextFormat(Qt::PlainText);
    QVBoxLayout *column = new QVBoxLayout(this);
    column->addWidget(title);
    column->addWidget(m_examples);
    addExamples();
    fitToExamples();
    connect(m_examples, &QTreeWidget::itemClicked, this, &QueryHelp::choose);
    connect(m_examples, &QTreeWidget::itemActivated, this, &QueryHelp::choose);
}

QueryHelp::~QueryHelp() = default;

void QueryHelp::addExamples()
{
    m_examples->setAccessibleName(text("Search examples"));
    m_examples->setHeaderHidden(true);
    m_examples->setRootIsDecorated(false);
    m_examples->setColumnCount(2);
    m_examples->setFrameShape(QFrame::NoFrame);
    m_examples->setAllColumnsShowFocus(true);
    m_examples->setUniformRowHeights(true);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    for (const Example &example : Examples) {
        QTreeWidgetItem *item = new QTreeWidgetItem(m_examples);
        item->setText(0, QLatin1String(example.query));
        item->setFont(0, fixed);
        item->setText(1, text(example.meaning));
    }
    m_examples->setCurrentItem(m_examples->topLevelItem(0));
}

/// As large as its rows: nothing to scroll.
void QueryHelp::fitToExamples()
{
    const int gap = fontMetrics().averageCharWidth() * 3;
    m_examples->header()->setStretchLastSection(false);
    int width = 2 * m_examples->frameWidth();
    for (int column = 0; column < 2; ++column) {
        m_examples->resizeColumnToContents(column);
        m_examples->setColumnWidth(column, m_examples->columnWidth(column) + gap);
        width += m_examples->columnWidth(column);
    }
    const int rowHeight = m_examples->visualItemRect(m_examples->topLevelItem(0)).height();
    m_examples->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_examples->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_examples->setFixedSize(width,
                             rowHeight * m_examples->topLevelItemCount() + 2 * m_examples->frameWidth());
}

void QueryHelp::popUp(const QWidget *below)
{
    adjustSize();
    QPoint corner = below->mapToGlobal(QPoint(below->width() - width(), below->height()));
    const QRect screen = below->screen()->availableGeometry();
    corner.setX(qBound(screen.left(), corner.x(), qMax(screen.left(), screen.right() - width())));
    corner.setY(qBound(screen.top(), corner.y(), qMax(screen.top(), screen.bottom() - height())));
    move(corner);
    show();
    m_examples->setFocus();
}

void QueryHelp::choose(const QTreeWidgetItem *item)
{
    // A click comes as an activation, too, in some styles.
    if (!isVisible()) {
        return;
    }
    close();
    Q_EMIT chosen(item->text(0));
}
