#pragma once

#include "QuerySnapshot.h"
#include "QueryTree.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QVector>

#include <memory>
#include <vector>

namespace kernel {

class QueryRun;
class TermMatcher;

/// Finds the sets of a snapshot that a query is true of. Needs no document and no event loop; for one thread.
class NK_KERNEL_SERVICES_EXPORT QueryEvaluation
{
    Q_DISABLE_COPY(QueryEvaluation)
public:
    /// @param snapshot, run must live as long as the evaluation
    QueryEvaluation(const QueryNode &query, const QuerySnapshot &snapshot, QueryRun &run);
    ~QueryEvaluation();

    /// The ids of the sets, in the snapshot's order. What is answered after the run was stopped is incomplete.
    QVector<quint64> matchingSets();

private:
    /// A QueryNode with its condition made ready.
    struct Node
    {
        QueryNode::Kind kind = QueryNode::Kind::Term;
        std::unique_ptr<TermMatcher> matcher;
        std::vector<Node> children;
    };

    Node prepared(const QueryNode &query);
    bool isTrue(const Node &node, const QuerySnapshot::Set &set) const;

    const QuerySnapshot &m_snapshot;
    QueryRun &m_run;
    const Node m_root;
};

} // namespace kernel
