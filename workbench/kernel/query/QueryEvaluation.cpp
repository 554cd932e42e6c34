#include "QueryEvaluation.h"

#include "QueryRun.h"
#include "TermMatcher.h"

#include <algorithm>

namespace kernel {

QueryEvaluation::QueryEvaluation(const QueryNode &query, const QuerySnapshot &snapshot, QueryRun &run)
    : m_snapshot(snapshot), m_run(run), m_root(prepared(query))
{}

QueryEvaluation::~QueryEvaluation() = default;

QueryEvaluation::Node QueryEvaluation::prepared(const QueryNode &query)
{
    Node node;
    node.kind = query.kind;
    if (query.kind == QueryNode::Kind::Term) {
        node.matcher = TermMatcher::make(query.term, m_snapshot, m_run);
    }
    for (const QueryNode &child : query.children) {
        node.children.push_back(prepared(child));
    }
    return node;
}

QVector<quint64> QueryEvaluation::matchingSets()
{
    QVector<quint64> found;
    for (const QuerySnapshot::Set &set : m_snapshot.sets) {
        if (m_run.isStopped()) {
            break;
        }
        if (isTrue(m_root, set)) {
            found.append(set.id);
        }
    }
    return found;
}

bool QueryEvaluation::isTrue(const Node &node, const QuerySnapshot::Set &set) const
{
    const auto isChildTrue = [this, &set](const Node &child) { return isTrue(child, set); };
    switch (node.kind) {
    case QueryNode::Kind::And:
        return std::all_of(node.children.cbegin(), node.children.cend(), isChildTrue);
    case QueryNode::Kind::Or:
        return std::any_of(node.children.cbegin(), node.children.cend(), isChildTrue);
    case QueryNode::Kind::Not:
        return !isTrue(node.children.front(), set);
    case QueryNode::Kind::Term:
        break;
    }
    return node.matcher->matches(set);
}

} // namespace kernel
