#pragma once

#include "QNKColor.h"
#include "nkQt4ExtExport.h"

#include <QDialog>

#include <memory>

/// The host's colour dialog: a hue/saturation/value field, RGB and hex fields, the previous colour and recent
/// colours.
class NK_QT4EXT_EXPORT QNKColorDialog : public QDialog
{
    Q_OBJECT
public:
    explicit QNKColorDialog(QWidget *parent = nullptr);
    ~QNKColorDialog() override;

    QNKColor getColor() const;
    /// Shows color as the present and as the previous colour.
    void reinit(const QNKColor &color);

public Q_SLOTS:
    void accept() override;
    void reject() override;

Q_SIGNALS:
    void colorChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
