#pragma once

#include "kernel/services/AssetStore.h"

#include <QString>

class QWidget;

/// What the asset panel asks before it acts.
namespace AssetQuestions {

/// Whether the check-out of somebody else is to be ended.
bool mayEndCheckOut(QWidget *parent, const kernel::AssetInfo &asset);
/// Asks for the connection URL of the database to use; empty stands for the person's own file. @param url the present
/// one, and receives the new one @return false where the person gave up
bool url(QWidget *parent, QString &url);
/// Asks for the password of the database. @return false where the person gave up
bool password(QWidget *parent, QString &password);

} // namespace AssetQuestions
