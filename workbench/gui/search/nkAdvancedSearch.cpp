#include <nkKernelServicesGUI/nkAdvancedSearch.h>

#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkQt4Ext/QNKFilterBar.h>

#include <QLineEdit>

namespace {

// From the query the keyboard goes on to the names of the tree that is searched.
void leadTo(const nkAdvancedSearchBar *bar, const QNKFilterBar *filterBar)
{
    QLineEdit *names = filterBar ? filterBar->searchLineEdit() : nullptr;
    if (names && names->window() == bar->window()) {
        QWidget::setTabOrder(bar->lineEdit(), names);
    }
}

} // namespace

nkAdvancedSearch::nkAdvancedSearch(int module, QNKFilterBar *filterBar, QWidget *parent)
    : QObject(parent), m_bar(new nkAdvancedSearchBar(parent)), m_module(module)
{
    m_bar->setObjectName(QStringLiteral("AdvancedSearchBar%1").arg(m_module));
    m_bar->setModule(m_module);
    leadTo(m_bar, filterBar);
    connect(m_bar, &nkAdvancedSearchBar::searchChanged, this, &nkAdvancedSearch::searchChanged);
}

nkAdvancedSearch::~nkAdvancedSearch() = default;

QWidget *nkAdvancedSearch::getWidget() const
{
    return m_bar;
}
