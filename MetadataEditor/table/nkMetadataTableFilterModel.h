#pragma once

#include "table/nkMetadataTextFilter.h"

#include <nkKernelServicesGUI/nkMetadataFilterModel.h>

#include <QList>
#include <QString>

/// The proxy between the key/value model and its view: hides rows by set name, key, value, type and state of
/// the set, and sorts the icon column by set colour.
///
/// A text filter passes where the cell's display text holds it anywhere, case-insensitively; it has no
/// wildcards. Empty filters pass everything.
class nkMetadataTableFilterModel : public nkMetadataFilterModel
{
    Q_OBJECT
public:
    /// The number that stands for tags in the type filter, beside the value types 0..7.
    static constexpr int TagType = 8;

    explicit nkMetadataTableFilterModel(QObject *parent = nullptr);
    ~nkMetadataTableFilterModel() override;

    QString keyFilter() const { return m_key.text(); }
    QString valueFilter() const { return m_value.text(); }
    QList<int> typeFilter() const { return m_allowedTypes; }
    bool isTypeFilterEnabled() const { return m_typeFilterEnabled; }

    /// The host's order of texts, beside the order of rows below.
    using nkMetadataFilterModel::lessThan;

public Q_SLOTS:
    // Each has the rows filtered anew only when something changed.
    void setKeyFilter(const QString &filter);
    void setValueFilter(const QString &filter);
    /// @param allowedTypes value types, and TagType for tags whatever their type; empty: every row passes
    void setTypeFilter(const QList<int> &allowedTypes);
    /// Default: enabled.
    void enableTypeFilter(bool enable);

protected:
    bool acceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    void prepareFilter() override;
    /// The icon column: by the colour's hue, saturation and value; rows of one colour by set name, then key,
    /// both in descending order. The other columns: as the base.
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    bool appendSortKey(const QModelIndex &sourceIndex, QByteArray &key) const override;

private:
    void setText(nkMetadataTextFilter &filter, const QString &text);
    static bool acceptsText(const nkMetadataTextFilter &filter, const QModelIndex &sourceIndex);
    bool filtersByType() const;
    bool filtersByState() const;
    bool acceptsType(const QModelIndex &sourceIndex) const;
    bool acceptsState(const QModelIndex &sourceIndex) const;
    bool lessByTexts(const QModelIndex &left, const QModelIndex &right) const;

    nkMetadataTextFilter m_name;
    nkMetadataTextFilter m_key;
    nkMetadataTextFilter m_value;
    bool m_typeFilterEnabled = true;
    bool m_typeFilterEmpty = true;
    QList<int> m_allowedTypes;
};
