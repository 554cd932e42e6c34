#pragma once

#include <nkQt4Ext/QNKTreeView.h>

#include <QList>

class SceneObjectModel;

/// The rows of an editor: a tree or a list of a SceneObjectModel. It keeps current row, expansion and scroll
/// position when the rows change, opens a new scene a little, and says in place of rows why there are none.
class SceneObjectView : public QNKTreeView
{
    Q_OBJECT
public:
    /// @param model not owned; outlives the view
    explicit SceneObjectView(SceneObjectModel *model, QWidget *parent = nullptr);
    ~SceneObjectView() override;

    /// What is said in place of rows, as plain text.
    void setEmptyText(const QString &text);
    QString emptyText() const { return m_emptyText; }
    /// Makes the row current without selecting anything and without moving what is shown.
    void setCurrentQuietly(const QModelIndex &index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void beforeReset();
    void afterReset();
    void expandFirstRows();
    void takeAnchor();
    void afterFollowing();
    void putAnchorBack();

    SceneObjectModel *m_model;
    QString m_emptyText;
    /// What was expanded outside of searches, by id.
    QList<quint64> m_expanded;
    quint64 m_current = 0;
    /// The first row that was seen, and where.
    quint64 m_anchor = 0;
    int m_anchorTop = 0;
};
