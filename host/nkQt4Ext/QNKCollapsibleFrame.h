#pragma once

#include "nkQt4ExtExport.h"

#include <QFrame>
#include <QPointer>

class QToolButton;

/// A frame with a title that folds its content away.
class NK_QT4EXT_EXPORT QNKCollapsibleFrame : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(bool expanded READ isExpanded WRITE setExpanded NOTIFY expandedChanged)
public:
    explicit QNKCollapsibleFrame(QWidget *parent = nullptr);
    ~QNKCollapsibleFrame() override;

    QString title() const;
    void setTitle(const QString &title);
    /// Default: expanded.
    bool isExpanded() const { return m_expanded; }
    void setExpanded(bool expanded);
    /// The content; the frame takes ownership and deletes the former one.
    void setWidget(QWidget *content);
    QWidget *widget() const { return m_content; }

Q_SIGNALS:
    void expandedChanged(bool expanded);

private:
    QToolButton *m_button = nullptr;
    QPointer<QWidget> m_content;
    QString m_title;
    bool m_expanded = true;
};
