#pragma once

#include <QFrame>
#include <QList>
#include <QPointer>

class QHBoxLayout;
class QHeaderView;
class QLineEdit;

/// A strip that keeps one widget under each column of a header: in width, order, visibility and keyboard
/// order. The widget of the last visible column stretches to the strip's right edge.
class nkMetadataSearchBar : public QFrame
{
    Q_OBJECT
public:
    /// @param header not owned; the strip stays as it is once the header is gone
    nkMetadataSearchBar(QHeaderView *header, QWidget *parent);
    ~nkMetadataSearchBar() override;

    /// Puts one widget a logical column into the strip, which becomes their parent, and follows the header
    /// from now on. Meant to be called once: every call connects to the header again.
    void setWidgets(const QList<QWidget *> &widgets);

public Q_SLOTS:
    /// Lays the strip out as the header stands now.
    void onUpdate();

private:
    void clearLayout();
    QWidget *placeWidgets();
    void orderTabs();
    QWidget *widgetAt(int visualIndex) const;

    QPointer<QHeaderView> m_header;
    QList<QWidget *> m_widgets;
    QHBoxLayout *m_layout = nullptr;
};
