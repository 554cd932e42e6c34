#pragma once

#include <QVector>

#include <memory>
#include <unordered_map>

/// The children of one source row as a proxy shows them. A proxy's indexes point at it, so it lives until the
/// source row is gone or the source is laid out anew.
struct ProxyRows
{
    static constexpr int Hidden = -1;

    ProxyRows(ProxyRows *rowsAbove, int sourceRow) : above(rowsAbove), row(sourceRow) {}

    void forget() { isBuilt = isJudged = false; }
    bool shows(int sourceRow) const { return places[sourceRow] != Hidden; }

    /// The rows among which the parent stands, and its source row there; null and -1 for the top.
    ProxyRows *above;
    int row;
    /// Source rows in the order in which they are shown.
    QVector<int> shown;
    /// For each source row its place in shown, or Hidden.
    QVector<int> places;
    /// All source rows in their order, hidden ones too, while isOrdered; empty where that is the source's order.
    QVector<int> order;
    /// Whether shown and places are true.
    bool isBuilt = false;
    /// Of rows that are not built: places says Hidden of what is not accepted and 0 of what is. Enough for the rows
    /// above, who want to know whether there is anything at all; the order is made when somebody looks.
    bool isJudged = false;
    /// Of isJudged rows: whether any is accepted.
    bool hasAccepted = false;
    bool isOrdered = false;
    /// Every row is accepted because a row above is. Says nothing where neither isBuilt nor isJudged.
    bool isWithin = false;
    /// Whether no source row has children: asked once, for a tree view asks it of every row again and again.
    enum class Leaves : char { Unknown, All, NotAll };
    Leaves leaves = Leaves::Unknown;
    /// By source row: the children lists somebody asked for.
    std::unordered_map<int, std::unique_ptr<ProxyRows>> below;
};
