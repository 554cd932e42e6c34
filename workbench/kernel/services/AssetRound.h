#pragma once

#include "../document/Clipboard.h"
#include "AssetStore.h"

#include <nkKernelServices/nkScopedMultiCommand.h>

#include <QCoreApplication>
#include <QStringList>

namespace kernel {

/// One operation of the asset manager over several sets, for its lifetime: the undo step of what it changes in the
/// scene, and what has failed meanwhile.
class AssetRound
{
    Q_DECLARE_TR_FUNCTIONS(AssetRound)
    Q_DISABLE_COPY(AssetRound)

public:
    /// @param title of the undo step
    /// @param missing what is told where no store is installed
    AssetRound(const QString &title, const QString &missing);

    /// Where its operations go; not to be asked for once the round goes on no more.
    AssetStore *store() const { return m_store; }
    /// False from the first failure of the store on.
    bool goesOn() const { return m_goesOn; }
    /// Notes what has gone wrong. @return whether nothing has
    bool take(const AssetResult &result);
    void refuse(const QString &error);
    /// One sentence each.
    const QStringList &errors() const { return m_errors; }

    /// The scene was changed.
    void noteChange() { m_hasChanged = true; }
    bool hasChanged() const { return m_hasChanged; }

    /// The text of a living set as the store keeps it.
    bool write(quint64 setId, QByteArray &content);
    /// What a version of an asset holds.
    bool read(const QString &assetId, int version, SetCopy &copy, AssetVersion &found);

private:
    nkScopedMultiCommand m_step;
    AssetStore *m_store;
    bool m_goesOn = true;
    bool m_hasChanged = false;
    QStringList m_errors;
};

} // namespace kernel
