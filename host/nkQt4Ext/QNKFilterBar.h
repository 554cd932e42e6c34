#pragma once

#include "nkQt4ExtExport.h"

#include <QList>
#include <QWidget>

#include <memory>

class QLineEdit;
class QNKTypeMenu;

/// A bar with a name search, a search-depth switch and a menu of categories with an enabling switch.
class NK_QT4EXT_EXPORT QNKFilterBar : public QWidget
{
    Q_OBJECT
public:
    explicit QNKFilterBar(QWidget *parent = nullptr);
    ~QNKFilterBar() override;

    /// Fills the menu; labels and groups come from getLabel and getCategory, so subclasses call it from
    /// their own constructor.
    void addTypesToMenu(const QList<int> &numbers);
    QNKTypeMenu *typeMenu() const;

    /// @param clear also empty the search when it is hidden
    void setSearchVisible(bool visible, bool clear);
    void setRecursiveFilterVisible(bool visible);
    void setNameFilterToolTip(const QString &toolTip);
    QLineEdit *searchLineEdit() const;

    QString nameFilter() const;
    bool isRecursiveFilteringEnabled() const;
    void setRecursiveFilteringEnabled(bool enabled);
    /// Default: on.
    bool isTypeFilteringEnabled() const;
    void setTypeFilteringEnabled(bool enabled);
    /// The ticked numbers, ascending; empty at first: no filtering by type.
    QList<int> typeFilter() const;
    void setTypeFilter(const QList<int> &numbers);
    /// Empties search and ticks; the switches stay.
    void clear();

Q_SIGNALS:
    // Each only where something changed, for a person's changes and the program's alike.
    void nameFilterChanged(const QString &text);
    void recursiveFilteringToggled(bool enabled);
    void typeFilteringToggled(bool enabled);
    void typeFilterChanged(const QList<int> &numbers);

protected:
    /// The menu text of a category; empty where the number is unknown.
    virtual QString getLabel(int number) const;
    /// The menu group of a category. The base puts all in group 1.
    virtual int getCategory(int number) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
