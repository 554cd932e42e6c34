#pragma once

#include <interchange/foreign/ForeignReader.h>

#include <QCoreApplication>
#include <QStringList>

#include <memory>
#include <vector>

namespace interchange {

/// The kinds of scene files beside glTF that can be opened.
class ForeignReaders
{
    Q_DECLARE_TR_FUNCTIONS(ForeignReaders)

public:
    struct Kind
    {
        QString name;         ///< as people call it: "IFC"; translated
        QStringList suffixes; ///< lower case, without the point
        std::unique_ptr<ForeignReader> (*make)();
    };

    /// In the order in which they are asked.
    static const std::vector<Kind> &kinds();
    /// The first reader that is for a file; null where none is. See ForeignReader::isFor.
    static std::unique_ptr<ForeignReader> readerFor(const QString &suffix, const QByteArray &firstBytes);
};

} // namespace interchange
