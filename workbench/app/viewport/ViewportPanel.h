#pragma once

#include "ViewportControl.h"
#include "ViewportIcons.h"
#include "ViewportScene.h"
#include "ViewportSelection.h"

#include <QWidget>

class QAction;
class QActionGroup;
class QLabel;
class QStackedLayout;
class QToolBar;
class ViewportWidget;

/// The viewport with its tool bar. Where there is nothing to draw, or no OpenGL, it says so instead, and what to do.
/// Reads and follows the scene only while it is seen.
class ViewportPanel : public QWidget
{
    Q_OBJECT
public:
    explicit ViewportPanel(QWidget *parent = nullptr);
    ~ViewportPanel() override;

    /// Another scene. @param source null for one without a file
    void setSource(const std::shared_ptr<const interchange::SceneSource> &source);

    ViewportScene *scene() { return &m_scene; }
    ViewportSelection *selection() { return &m_selection; }
    ViewportControl *control() { return &m_control; }
    /// The picture; null until there is something to draw, and where there is no OpenGL.
    ViewportWidget *canvas() const { return m_canvas; }
    /// What stands in place of the picture; empty while the picture is there.
    QString message() const;
    /// What is not drawn, in a line below; empty where everything is.
    QString notice() const;

Q_SIGNALS:
    /// A person wants to see the metadata of what is selected; the editor of metadata was told.
    void metadataRequested();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void createTools();
    void createActions();
    void createMessage();
    void addTool(ViewportControl::Tool tool, ViewportIcons::Shape shape, const QString &text,
                 const QString &tip);
    QAction *addToggle(SceneGizmos::Kind kind, ViewportIcons::Shape shape, const QString &text,
                       const QString &tip);
    QAction *addCommand(const QString &name, const QString &text, void (ViewportControl::*command)());
    void placeInToolBar(QAction *action);
    void updatePicture();
    void createCanvas();
    void showMessage(const QString &text);
    QString reasonForNoPicture() const;
    void updateNotice();
    void updateActions();

    ViewportScene m_scene;
    ViewportSelection m_selection;
    ViewportControl m_control;
    QToolBar *m_tools;
    QActionGroup *m_toolGroup;
    QStackedLayout *m_stack;
    QLabel *m_message;
    QLabel *m_notice;
    ViewportWidget *m_canvas = nullptr;
    QAction *m_fitSelection = nullptr;
    QAction *m_fitAll = nullptr;
    QAction *m_selectAll = nullptr;
    QAction *m_selectNone = nullptr;
    QAction *m_showMetadata = nullptr;
    bool m_hasFailed = false;
};
