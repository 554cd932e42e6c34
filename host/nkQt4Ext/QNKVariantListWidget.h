#pragma once

#include "nkQt4ExtExport.h"

#include <QVariant>
#include <QWidget>

#include <memory>

class QAbstractItemDelegate;
class QNKListWidget;

/// An editor of a list of typed values: elements are added, removed, reordered and edited by their type.
class NK_QT4EXT_EXPORT QNKVariantListWidget : public QWidget
{
    Q_OBJECT
public:
    explicit QNKVariantListWidget(QWidget *parent = nullptr, Qt::WindowFlags flags = {});
    ~QNKVariantListWidget() override;

    /// The list as it stands; an element that was not touched has the type and value it came with.
    QVariantList values() const;
    void setValues(const QVariantList &values);

    /// The inner list; each item holds its element under Qt::UserRole.
    QNKListWidget *list() const;
    /// Draws and edits the elements; not owned.
    void setItemDelegate(QAbstractItemDelegate *delegate);

Q_SIGNALS:
    void valuesChanged();
    /// The editor is done: true to commit, false to give up (Esc).
    void finished(bool commit);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
