#include <nkKernelServicesGUI/nkMetadataFilterModel.h>

namespace {

// A group in which nothing is asked for lets everything pass; else one of what is asked for suffices.
class StateGroup
{
public:
    explicit StateGroup(const QList<int> &asked) : m_asked(asked) {}

    void test(int state, bool holds)
    {
        if (m_asked.contains(state)) {
            m_empty = false;
            m_passed = m_passed || holds;
        }
    }

    bool passes() const { return m_empty || m_passed; }

private:
    const QList<int> &m_asked;
    bool m_empty = true;
    bool m_passed = false;
};

} // namespace

nkMetadataFilterModel::nkMetadataFilterModel(QObject *parent) : QNKSortFilterProxyModel(parent) {}

nkMetadataFilterModel::~nkMetadataFilterModel() = default;

bool nkMetadataFilterModel::matchesStates(const nkdMetadataSet &set, const QList<int> &states)
{
    if (states.isEmpty()) {
        return true;
    }
    StateGroup lock(states);
    lock.test(Locked, set.isLocked());
    lock.test(Unlocked, !set.isLocked());
    StateGroup use(states);
    use.test(Asset, set.isAsset());
    // An object's own set is never assigned, and never lacks its object either.
    use.test(Unassigned, !set.isAssigned() && !set.isObjectSet());
    return lock.passes() && use.passes();
}

void nkMetadataFilterModel::setNameFilter(const QString &filter)
{
    if (filter == m_nameFilter) {
        return;
    }
    m_nameFilter = filter;
    refilter();
}

void nkMetadataFilterModel::setStateFilter(const QList<int> &states)
{
    if (states == m_stateFilter) {
        return;
    }
    m_stateFilter = states;
    refilter();
}

void nkMetadataFilterModel::enableStateFilter(bool enable)
{
    if (enable == m_stateFilterEnabled) {
        return;
    }
    m_stateFilterEnabled = enable;
    refilter();
}

bool nkMetadataFilterModel::filterState(const nkdMetadataSet &set) const
{
    return matchesStates(set, m_stateFilter);
}
