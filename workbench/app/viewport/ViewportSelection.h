#pragma once

#include "panels/EditorService.h"

/// The selection of the viewport, which is the scene graph's: everything that is seen here stands there.
///
/// A person's choice goes to the scene graph's service once and makes its editor the one of the last selection. What
/// others select is shown and moves nothing.
class ViewportSelection : public QObject
{
    Q_OBJECT
public:
    enum class How {
        Replace,
        Add,
        /// Adds what is not selected, and takes away what is.
        Toggle
    };

    explicit ViewportSelection(QObject *parent = nullptr);
    ~ViewportSelection() override;

    /// In the order in which they were selected.
    QList<quint64> ids() const { return m_service.selection(); }
    /// A person has chosen these objects.
    void choose(const QList<quint64> &ids, How how);
    /// Has the editor of metadata list what is selected.
    void showMetadata();

Q_SIGNALS:
    /// The selection was set, by whomever, equal or not.
    void changed();
    /// A person wants to see the metadata of what is selected; the editor of metadata was told.
    void metadataRequested();

private:
    const EditorService m_service;
};
