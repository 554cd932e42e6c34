#pragma once

#include "EditorService.h"
#include "EditorText.h"

#include <QWidget>

class EditorCommands;
class QAction;
class QNKSearchBox;
class SceneObjectModel;
class SceneObjectView;

/// The panel of one of the scene's editors: what it lists, a search by name, and the selection, kept equal to
/// that of the editor's service in both directions.
///
/// A person's selection goes to the service once and is not heard back; it makes this editor the one of the
/// last selection. What others select in the service is shown and moves nothing. Objects that a search hides
/// stay selected until a person selects something else.
class EditorPanel : public QWidget
{
    Q_OBJECT
public:
    explicit EditorPanel(EditorModule module, QWidget *parent = nullptr);
    ~EditorPanel() override;

    EditorModule module() const { return m_module; }
    const EditorText &text() const { return m_text; }
    SceneObjectView *view() const { return m_view; }
    SceneObjectModel *model() const { return m_model; }
    QNKSearchBox *searchBox() const { return m_search; }
    EditorCommands *commands() const { return m_commands; }

    /// What is selected, in the order of the selection; what a search hides, too.
    QList<quint64> selectedObjects() const { return m_service.selection(); }
    /// Selects these as a person's gesture does, with the first as the current row, in sight.
    void selectObjects(const QList<quint64> &ids);
    /// Lets a person edit the name, where it can be changed; a search that hides the object ends.
    void renameObject(quint64 id);

Q_SIGNALS:
    /// A person wants to see the metadata of what is selected here; the editor of metadata was told.
    void metadataRequested();
    /// Something for the status line: why a command did nothing.
    void statusMessage(const QString &text);

private:
    void createSearch();
    void createView();
    void createCommands();
    void layOut();
    void connectSearch();
    void connectRows();
    void connectSelections();
    void search(const QString &text);
    void becomeLast();
    void push();
    void select(const QList<quint64> &ids);
    void pull(EditorService::Reveal reveal);
    void revealFirst();
    QList<quint64> viewSelection() const;
    QList<quint64> inOrderOfSelection(const QList<quint64> &ids) const;
    void showMenu(const QPoint &position);
    void showMetadata();
    void updateEmptyText();

    const EditorModule m_module;
    const EditorText m_text;
    const EditorService m_service;
    SceneObjectModel *m_model;
    SceneObjectView *m_view = nullptr;
    QNKSearchBox *m_search = nullptr;
    QAction *m_showMetadata = nullptr;
    EditorCommands *m_commands = nullptr;
    bool m_pushing = false;
    bool m_pulling = false;
};
