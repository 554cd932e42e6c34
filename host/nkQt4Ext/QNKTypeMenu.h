#pragma once

#include "nkQt4ExtExport.h"

#include <QList>
#include <QMap>
#include <QMenu>

/// A menu of numbered categories, each a check box; stays open while boxes are ticked.
class NK_QT4EXT_EXPORT QNKTypeMenu : public QMenu
{
    Q_OBJECT
public:
    explicit QNKTypeMenu(QWidget *parent = nullptr);
    ~QNKTypeMenu() override;

    /// Appends a category; a group other than the previous entry's puts a separator before it.
    void addType(int number, const QString &label, int group);
    /// The ticked numbers, ascending.
    QList<int> checkedTypes() const;
    void setCheckedTypes(const QList<int> &numbers);

Q_SIGNALS:
    void checkedTypesChanged(const QList<int> &numbers);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool triggerAndStay(QAction *action);

    QMap<int, QAction *> m_types;
    int m_lastGroup = 0;
    bool m_pressedHere = false;
    bool m_settingAll = false;
};
