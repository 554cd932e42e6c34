#pragma once

#include "kernel/services/AssetStore.h"

#include <QString>

class QWidget;

/// What the asset panel asks before it acts.
namespace AssetQuestions {

/// Whether the check-out of somebody else is to be ended.
bool mayEndCheckOut(QWidget *parent, const kernel::AssetInfo &asset);
/// Asks for the password of the database. @return false where the person gave up
bool password(QWidget *parent, QString &password);

} // namespace AssetQuestions
