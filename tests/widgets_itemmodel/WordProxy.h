#pragma once

#include <nkQt4Ext/QNKSortFilterProxyModel.h>

/// Shows the rows whose text holds a word.
class WordProxy : public QNKSortFilterProxyModel
{
public:
    explicit WordProxy(bool withKeys) : m_withKeys(withKeys) {}

    using QNKSortFilterProxyModel::lessThan;

    QString word() const { return m_word; }
    void setWord(const QString &word)
    {
        m_word = word;
        refilter();
    }
    bool accepts(const QString &text) const { return text.contains(m_word); }

    mutable int asked = 0;
    mutable int compared = 0;

protected:
    bool acceptsRow(int row, const QModelIndex &parent) const override
    {
        ++asked;
        return accepts(sourceModel()->index(row, 0, parent).data().toString());
    }
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override
    {
        ++compared;
        return QNKSortFilterProxyModel::lessThan(left, right);
    }
    bool appendSortKey(const QModelIndex &index, QByteArray &key) const override
    {
        if (!m_withKeys || index.column() != 0)
            return false;
        appendTextSortKey(index.data().toString(), key);
        return true;
    }

private:
    QString m_word;
    bool m_withKeys;
};
