#include "tree/nkMetadataModeWidget.h"

#include <nkQt4Ext/QNKComboBox.h>
#include <nkQt4Ext/QNKInlineButton.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QHBoxLayout>
#include <QSignalBlocker>

nkMetadataModeWidget::nkMetadataModeWidget(QWidget *parent, Qt::WindowFlags flags) : QWidget(parent, flags)
{
    createModeCombo();
    createLastSelectionButton();
    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_modeCombo);
    layout->addWidget(m_lastSelectionButton);
}

nkMetadataModeWidget::~nkMetadataModeWidget() = default;

void nkMetadataModeWidget::createModeCombo()
{
    m_modeCombo = new QNKComboBox(this);
    m_modeCombo->setObjectName(QStringLiteral("MetadataModeSwitch"));
    m_modeCombo->setAccessibleName(tr("List type"));
    m_modeCombo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    // In the order of TreeMode, so that the index is the mode.
    m_modeCombo->addItem(QIcon(), tr("Sets"));
    m_modeCombo->addItem(QIcon(), tr("Scenegraph"));
    m_modeCombo->addItem(QIcon(), tr("Material Editor"));
    m_modeCombo->addItem(QIcon(), tr("Camera Editor"));
    m_modeCombo->addItem(QIcon(), tr("Light Editor"));
    m_modeCombo->addItem(QIcon(), tr("Sceneplate Editor"));
    m_modeCombo->addItem(QIcon(), tr("All Objects"));
    m_modeCombo->setToolTip(tr(
        "<html><head/><body><p>Choose list type:<br><br><b>Sets:</b><br>Lists all metadata sets existing in "
        "the scene. The table displays always set entries no matter if selecting a set or its assigned "
        "objects.<br><br><b>All Objects, Scenegraph, Materials, Lights, Cameras, Sceneplates, last selection "
        "option:</b><br><br>Lists all objects of the scene where metadata sets and/or direct entries are "
        "assigned. The table displays entries depending on the selection, set entries, object entries or all "
        "assigned entries when selecting the object itself.</p></body></html>"));
    connect(m_modeCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this](int index) { setMode(TreeMode(index)); });
}

void nkMetadataModeWidget::createLastSelectionButton()
{
    m_lastSelectionButton = new QNKInlineButton(this);
    m_lastSelectionButton->setCheckable(true);
    m_lastSelectionButton->setAccessibleName(tr("Last selection"));
    m_lastSelectionButton->setIcon(nkIconManager::getIcon(QStringLiteral("Arrow"), QString()));
    m_lastSelectionButton->setTerminated(true);
    m_lastSelectionButton->setToolTip(tr(
        "Enables the \"last selection option\". Objects on which the last selection was executed in viewport "
        "or other Modules are listed underneath."));
    connect(m_lastSelectionButton, &QAbstractButton::toggled, this, [this](bool checked) {
        setMode(checked ? TreeMode::LastSelection : TreeMode(m_modeCombo->currentIndex()));
    });
}

void nkMetadataModeWidget::setMode(TreeMode mode)
{
    if (mode == m_mode) {
        return;
    }
    const QSignalBlocker comboBlocker(m_modeCombo);
    const QSignalBlocker buttonBlocker(m_lastSelectionButton);
    const bool listsLastSelection = mode == TreeMode::LastSelection;
    m_modeCombo->setEnabled(!listsLastSelection);
    if (!listsLastSelection) {
        m_modeCombo->setCurrentIndex(int(mode));
    }
    m_lastSelectionButton->setChecked(listsLastSelection);
    m_mode = mode;
    Q_EMIT modeChanged(mode);
}
