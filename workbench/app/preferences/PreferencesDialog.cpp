#include "PreferencesDialog.h"

#include "PageText.h"

#include "kernel/services/PreferencesService.h"

#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

namespace {

constexpr QSize startSize(760, 480);
constexpr int categoriesWidth = 180;

kernel::PreferencesService &service()
{
    return static_cast<kernel::PreferencesService &>(nkPreferencesService::the());
}

bool growsInHeight(const QWidget *page)
{
    return page->layout() && page->layout()->expandingDirections().testFlag(Qt::Vertical);
}

} // namespace

PreferencesDialog::PreferencesDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("PreferencesDialog"));
    setWindowTitle(tr("Preferences"));
    auto *columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addWidget(makeCategories());
    columns->addWidget(makePages(), 1);
    auto *rows = new QVBoxLayout(this);
    rows->addLayout(columns, 1);
    rows->addWidget(makeButtons());
    const QList<nkPreferencesCategory *> categories = nkPreferencesCategory::categories();
    for (nkPreferencesCategory *category : categories) {
        addCategory(category);
    }
    connect(m_search, &QLineEdit::textChanged, this, &PreferencesDialog::search);
    connect(m_categories, &QListWidget::currentRowChanged, this, &PreferencesDialog::showPage);
    m_categories->setCurrentRow(0);
    m_categories->setFocus();
    resize(startSize);
}

PreferencesDialog::~PreferencesDialog()
{
    for (const QPointer<QWidget> &page : qAsConst(m_pages)) {
        if (page) {
            page->hide();
            page->setParent(nullptr);
        }
    }
}

QWidget *PreferencesDialog::makeCategories()
{
    auto *side = new QWidget(this);
    side->setFixedWidth(categoriesWidth);
    m_search = new QLineEdit(side);
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search preferences"));
    m_search->setClearButtonEnabled(true);
    m_categories = new QListWidget(side);
    m_categories->setAccessibleName(tr("Categories"));
    m_nothingFound = new QLabel(tr("No page says that."), side);
    m_nothingFound->hide();
    auto *rows = new QVBoxLayout(side);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_search);
    rows->addWidget(m_nothingFound);
    rows->addWidget(m_categories, 1);
    return side;
}

QWidget *PreferencesDialog::makePages()
{
    auto *side = new QWidget(this);
    m_title = new QLabel(side);
    m_title->setTextFormat(Qt::PlainText);
    QFont font = m_title->font();
    font.setBold(true);
    m_title->setFont(font);
    m_stack = new QStackedWidget(side);
    auto *rows = new QVBoxLayout(side);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_title);
    rows->addWidget(m_stack, 1);
    return side;
}

QDialogButtonBox *PreferencesDialog::makeButtons()
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply
                                             | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults,
                                         this);
    QPushButton *defaults = buttons->button(QDialogButtonBox::RestoreDefaults);
    defaults->setToolTip(tr("Show the defaults of this page; they take effect with OK or Apply."));
    connect(buttons, &QDialogButtonBox::accepted, this, &PreferencesDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PreferencesDialog::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &PreferencesDialog::storeAndApply);
    connect(defaults, &QPushButton::clicked, this, &PreferencesDialog::restoreDefaults);
    return buttons;
}

void PreferencesDialog::addCategory(nkPreferencesCategory *category)
{
    QWidget *page = category->getWidget();
    if (!page) {
        return;
    }
    category->loadToPage();
    // The stack shows and hides a widget of its own, so that the page itself is left as its category made it.
    auto *place = new QWidget(m_stack);
    auto *rows = new QVBoxLayout(place);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(page);
    if (!growsInHeight(page)) {
        rows->addStretch(1);
    }
    page->show();
    m_stack->addWidget(place);
    m_pages.append(page);
    m_categories->addItem(category->getName());
}

/// Asked for anew each time: a plug-in may have gone since the dialog was made, or come, with a page that
/// shows nothing yet.
QList<nkPreferencesCategory *> PreferencesDialog::shownCategories() const
{
    QList<nkPreferencesCategory *> shown;
    const QList<nkPreferencesCategory *> categories = nkPreferencesCategory::categories();
    for (nkPreferencesCategory *category : categories) {
        QWidget *page = category->getWidget();
        if (page && m_pages.contains(page)) {
            shown.append(category);
        }
    }
    return shown;
}

void PreferencesDialog::showPage(int row)
{
    m_title->setText(row < 0 ? QString() : m_categories->item(row)->text());
    m_stack->setVisible(row >= 0);
    if (row >= 0) {
        m_stack->setCurrentIndex(row);
    }
}

void PreferencesDialog::search(const QString &text)
{
    int firstFound = -1;
    for (int row = m_categories->count() - 1; row >= 0; --row) {
        QListWidgetItem *category = m_categories->item(row);
        const QWidget *page = m_pages.at(row);
        const QString words = category->text() + QLatin1Char('\n') + (page ? pageText(page) : QString());
        const bool found = words.contains(text, Qt::CaseInsensitive);
        category->setHidden(!found);
        firstFound = found ? row : firstFound;
    }
    m_nothingFound->setVisible(firstFound < 0);
    const QListWidgetItem *current = m_categories->currentItem();
    if (!current || current->isHidden()) {
        m_categories->setCurrentRow(firstFound);
    }
}

void PreferencesDialog::accept()
{
    storeAndApply();
    QDialog::accept();
}

void PreferencesDialog::storeAndApply()
{
    QStringList changed;
    const auto note = connect(&service(), &nkPreferencesService::valueChanged, this,
                              [&changed](const QString &key) { changed.append(key); });
    const QList<nkPreferencesCategory *> categories = shownCategories();
    for (nkPreferencesCategory *category : categories) {
        category->storeFromPage();
    }
    disconnect(note);
    for (nkPreferencesCategory *category : categories) {
        category->setChangedKeys(changed);
        category->apply();
        category->setChangedKeys({});
    }
    service().flush();
}

void PreferencesDialog::restoreDefaults()
{
    const QWidget *page = m_pages.value(m_categories->currentRow());
    const QList<nkPreferencesCategory *> categories = shownCategories();
    for (nkPreferencesCategory *category : categories) {
        if (category->getWidget() == page) {
            service().beginTrial();
            category->setDefaults(true);
            category->loadToPage();
            service().endTrial();
        }
    }
}
