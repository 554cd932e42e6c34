#include "ViewportPanel.h"

#include "OpenGlCheck.h"
#include "ViewportWidget.h"

#include <QActionGroup>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QStackedLayout>
#include <QToolBar>
#include <QVBoxLayout>

using Shape = ViewportIcons::Shape;
using Tool = ViewportControl::Tool;

namespace {

constexpr int iconSize = 20;
constexpr int margin = 24;

} // namespace

ViewportPanel::ViewportPanel(QWidget *parent)
    : QWidget(parent),
      m_control(&m_scene, &m_selection),
      m_tools(new QToolBar(this)),
      m_toolGroup(new QActionGroup(this)),
      m_stack(new QStackedLayout),
      m_message(new QLabel(this)),
      m_notice(new QLabel(this))
{
    setAccessibleName(tr("Viewport"));
    createActions();
    createTools();
    createMessage();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_tools);
    column->addLayout(m_stack, 1);
    column->addWidget(m_notice);
    connect(&m_scene, &ViewportScene::stateChanged, this, &ViewportPanel::updatePicture);
    connect(&m_scene, &ViewportScene::changed, this, &ViewportPanel::updatePicture);
    connect(&m_selection, &ViewportSelection::changed, this, &ViewportPanel::updateActions);
    connect(&m_selection, &ViewportSelection::metadataRequested, this, &ViewportPanel::metadataRequested);
    updatePicture();
    updateActions();
}

ViewportPanel::~ViewportPanel() = default;

void ViewportPanel::setSource(const std::shared_ptr<const interchange::SceneSource> &source)
{
    m_scene.setSource(source);
}

QString ViewportPanel::message() const
{
    return m_stack->currentWidget() == m_message ? m_message->text() : QString();
}

QString ViewportPanel::notice() const
{
    return m_notice->isHidden() ? QString() : m_notice->text();
}

void ViewportPanel::createActions()
{
    m_fitSelection = addCommand(QStringLiteral("fitSelection"), tr("&Fit Selection"),
                                &ViewportControl::fitSelection);
    m_fitAll = addCommand(QStringLiteral("fitAll"), tr("Fit &All"), &ViewportControl::fitAll);
    m_selectAll = addCommand(QStringLiteral("selectAll"), tr("&Select All"), &ViewportControl::selectAll);
    m_selectNone = addCommand(QStringLiteral("selectNone"), tr("Select &None"), &ViewportControl::selectNone);
    m_fitSelection->setIcon(ViewportIcons::icon(Shape::Fit));
    m_fitSelection->setToolTip(tr("Fit Selection: look at what is selected (F)"));
    m_fitAll->setIcon(ViewportIcons::icon(Shape::All));
    m_fitAll->setToolTip(tr("Fit All: look at the whole scene (Home or A)"));
    m_showMetadata = new QAction(tr("Show &Metadata"), this);
    m_showMetadata->setObjectName(QStringLiteral("showMetadata"));
    connect(m_showMetadata, &QAction::triggered, &m_selection, &ViewportSelection::showMetadata);
}

QAction *ViewportPanel::addCommand(const QString &name, const QString &text,
                                   void (ViewportControl::*command)())
{
    auto *action = new QAction(text, this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, &m_control, command);
    return action;
}

void ViewportPanel::createTools()
{
    m_tools->setObjectName(QStringLiteral("tools"));
    m_tools->setAccessibleName(tr("Viewport Tools"));
    m_tools->setIconSize(QSize(iconSize, iconSize));
    addTool(Tool::Select, Shape::Select, tr("Select"),
            tr("Select: click an object or drag a frame around objects. Ctrl takes in and out, Shift adds."));
    addTool(Tool::Orbit, Shape::Orbit, tr("Orbit"),
            tr("Orbit: drag to turn the view. Also with the middle button, with Alt, or by the arrow keys."));
    addTool(
        Tool::Pan, Shape::Pan, tr("Pan"),
        tr("Pan: drag to move the view. Also with Shift and the middle button or the arrow keys. The wheel "
           "comes closer and goes away, as + and - do."));
    m_tools->addSeparator();
    placeInToolBar(m_fitSelection);
    placeInToolBar(m_fitAll);
    m_tools->addSeparator();
    placeInToolBar(addToggle(SceneGizmos::Cameras, Shape::Camera, tr("Show Cameras"),
                             tr("Show Cameras: draw where cameras stand and what they see")));
    placeInToolBar(addToggle(SceneGizmos::Lights, Shape::Light, tr("Show Lights"),
                             tr("Show Lights: draw where lights stand and where they shine")));
}

void ViewportPanel::addTool(Tool tool, Shape shape, const QString &text, const QString &tip)
{
    auto *action = new QAction(ViewportIcons::icon(shape), text, m_toolGroup);
    action->setToolTip(tip);
    action->setCheckable(true);
    action->setChecked(tool == m_control.tool());
    connect(action, &QAction::triggered, &m_control, [this, tool] { m_control.setTool(tool); });
    placeInToolBar(action);
}

QAction *ViewportPanel::addToggle(SceneGizmos::Kind kind, Shape shape, const QString &text,
                                  const QString &tip)
{
    auto *action = new QAction(ViewportIcons::icon(shape), text, this);
    action->setToolTip(tip);
    action->setCheckable(true);
    action->setChecked(true);
    connect(action, &QAction::toggled, &m_control, [this, kind](bool on) { m_control.setShown(kind, on); });
    return action;
}

void ViewportPanel::placeInToolBar(QAction *action)
{
    m_tools->addAction(action);
    QWidget *button = m_tools->widgetForAction(action);
    button->setAccessibleName(action->text().remove(QLatin1Char('&')));
    button->setFocusPolicy(Qt::TabFocus);
}

void ViewportPanel::createMessage()
{
    for (QLabel *label : {m_message, m_notice}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    m_message->setObjectName(QStringLiteral("message"));
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setMargin(margin);
    m_message->setMinimumHeight(1);
    m_stack->addWidget(m_message);
    m_notice->setObjectName(QStringLiteral("notice"));
    m_notice->setMargin(4);
    m_notice->hide();
}

QString ViewportPanel::reasonForNoPicture() const
{
    if (m_hasFailed) {
        return tr("The scene cannot be drawn: the graphics driver refuses its programs.\n"
                  "Update the driver and start again. Everything else works without this picture.");
    }
    if (m_scene.state() == ViewportScene::State::Reading) {
        return tr("Reading the scene's geometry…");
    }
    if (m_scene.state() == ViewportScene::State::Empty && m_scene.isBlank()) {
        return tr("There is nothing to draw yet.\nOpen a file by File > Open, or drop one onto the window.");
    }
    if (m_scene.isBlank()) {
        return tr("There is nothing to draw in this scene.\nIts objects are listed in the scene graph.");
    }
    return OpenGlCheck::missing().isEmpty() ? QString()
                                            : tr("The scene cannot be drawn here. %1\nInstall or update the "
                                                 "driver of the graphics card and start "
                                                 "again. Everything else works without this picture.")
                                                  .arg(OpenGlCheck::missing());
}

void ViewportPanel::updatePicture()
{
    const QString reason = reasonForNoPicture();
    if (!reason.isEmpty()) {
        showMessage(reason);
    } else if (isVisible()) {
        createCanvas();
        m_stack->setCurrentWidget(m_canvas);
    }
    m_tools->setEnabled(reason.isEmpty());
    updateNotice();
    updateActions();
}

void ViewportPanel::showMessage(const QString &text)
{
    m_message->setText(text);
    m_stack->setCurrentWidget(m_message);
}

void ViewportPanel::createCanvas()
{
    if (m_canvas) {
        return;
    }
    m_canvas = new ViewportWidget(&m_scene, &m_selection, &m_control, this);
    m_canvas->setObjectName(QStringLiteral("canvas"));
    m_canvas->setAccessibleName(tr("Viewport"));
    m_canvas->setAccessibleDescription(
        tr("The scene. Arrow keys turn the view, with Shift they move it; + and - "
           "come closer and go away; F looks at the selection, Home at everything."));
    m_stack->addWidget(m_canvas);
    setFocusProxy(m_canvas);
    // Not while it is being drawn.
    connect(
        m_canvas, &ViewportWidget::failed, this,
        [this] {
            m_hasFailed = true;
            updatePicture();
        },
        Qt::QueuedConnection);
}

void ViewportPanel::updateNotice()
{
    const QStringList troubles = m_scene.troubles();
    m_notice->setVisible(!troubles.isEmpty());
    m_notice->setText(troubles.size() > 1
                          ? tr("Not everything is drawn, for %n reasons: ", nullptr, troubles.size())
                                + troubles.constFirst()
                          : troubles.value(0));
    // Tool tips take texts for markup where they look like it.
    m_notice->setToolTip(QStringLiteral("<p style='white-space:pre-wrap'>%1</p>")
                             .arg(troubles.join(QLatin1Char('\n')).toHtmlEscaped()));
}

void ViewportPanel::updateActions()
{
    const bool hasPicture = !m_scene.isBlank();
    const bool hasSelection = !m_selection.ids().isEmpty();
    m_fitSelection->setEnabled(hasPicture && hasSelection);
    m_fitAll->setEnabled(hasPicture);
    m_selectAll->setEnabled(hasPicture);
    m_selectNone->setEnabled(hasSelection);
    m_showMetadata->setEnabled(hasSelection);
}

void ViewportPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_scene.setActive(true);
    updatePicture();
}

void ViewportPanel::hideEvent(QHideEvent *event)
{
    m_control.cancel();
    m_scene.setActive(false);
    QWidget::hideEvent(event);
}

void ViewportPanel::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.addAction(m_showMetadata);
    menu.addSeparator();
    menu.addActions({m_fitSelection, m_fitAll});
    menu.addSeparator();
    menu.addActions({m_selectAll, m_selectNone});
    menu.exec(event->globalPos());
}
