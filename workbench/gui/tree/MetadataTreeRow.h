#pragma once

#include <nkKernelServices/nkObjectType.h>
#include <nkQt4Ext/QNKModelItem.h>

class nkdMetadataSet;
class nkdObject;
class nkdSceneObject;

/// One row of a tree of metadata: a set or a scene object. It keeps ids and no handles: a handle is eight
/// times as large, and lists hold hundreds of thousands of rows. Names, icons and children are asked from
/// the host when they are looked at.
class MetadataTreeRow : public QNKModelItem
{
public:
    /// @param parentId the object id of the row above; 0 for a top-level row
    MetadataTreeRow(const nkdObject &object, quint64 parentId);
    ~MetadataTreeRow() override;

    /// The set or the scene object of the row.
    nkdObject object() const;
    bool isSet() const { return m_type == quint8(nkObjectType::MetadataSet); }
    bool isTopLevel() const { return m_parentId == 0; }

    bool hasChildren() const override;
    void loadChildren() override;
    /// ObjectRole is answered from the ids and never kept.
    QVariant data(int role, int column) const override;
    /// As the object is now, not as it was when the row was made.
    bool getEditable(int column) const override;
    QVariant getId() const override;
    QVariant getClassName() const override;
    /// Renames the object. A name that the host changed or refused is put back into the cell.
    void userDataChanged(int role, int column) override;
    void getMimeData(QDataStream &stream) const override;
    bool canDrop(const QMimeData *data, Qt::DropAction action) const override;
    bool drop(const QMimeData *data, Qt::DropAction action) override;

protected:
    QVariant loadData(int role, int column) const override;

private:
    nkdMetadataSet set() const;
    nkdSceneObject sceneObject() const;
    QString name() const;
    bool isObjectEditable() const;
    bool isAssignedToAnything() const;

    // Stands first to fall into the padding behind the base's members.
    quint8 m_type;
    quint64 m_objectId;
    quint64 m_parentId;
};
