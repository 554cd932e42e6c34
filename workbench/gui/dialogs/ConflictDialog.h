#pragma once

#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>

#include <QDialog>
#include <QHash>
#include <QVariant>

class QTreeWidget;

/// Asks what to do where keys of entries that are to be pasted exist already. Lists set, key, the present
/// and the pasted value of each; names, keys and values are shown as plain text.
class ConflictDialog : public QDialog
{
    Q_OBJECT
public:
    using Conflicts = QMap<quint64, QList<nkdMetadataEntry>>;
    /// By key; an invalid value stands for a tag, a missing key for an unknown value.
    using PastedValues = QHash<QString, QVariant>;

    ConflictDialog(const Conflicts &conflicts, const PastedValues &pasted, QWidget *parent);
    ~ConflictDialog() override;

    /// Runs the dialog, centred on the host's main window. Closing it is a Cancel, and so is having nothing
    /// to ask.
    static nkMetadataGUIUtils::ConflictResult ask(const Conflicts &conflicts, const PastedValues &pasted);
    /// The values of the entry clipboard.
    static PastedValues clipboardValues();

    nkMetadataGUIUtils::ConflictResult answer() const { return m_answer; }

private:
    void fill(const Conflicts &conflicts, const PastedValues &pasted);
    void addRow(const nkdMetadataSet &set, const nkdMetadataEntry &entry, const PastedValues &pasted);
    void addButtons();
    void finish(nkMetadataGUIUtils::ConflictResult answer);

    QTreeWidget *m_list;
    nkMetadataGUIUtils::ConflictResult m_answer = nkMetadataGUIUtils::Cancel;
};
