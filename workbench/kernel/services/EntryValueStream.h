#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QDataStream>
#include <QVariant>

/// Values of metadata entries on a data stream: a kind number, then the bare value. Only the stored types of
/// entries and what their lists may hold travel; QVariant's own operator would make whatever type a damaged
/// stream names.
namespace kernel::EntryValueStream {

/// Lists in lists deeper than this are refused when read and written as texts.
constexpr int deepestList = 16;

/// Writes value; one of a type that no entry stores is written as its text.
NK_KERNEL_SERVICES_EXPORT void write(QDataStream &stream, const QVariant &value);
/// Reads what write left. Anything else leaves the stream in an error state and gives an invalid value.
NK_KERNEL_SERVICES_EXPORT QVariant read(QDataStream &stream);

} // namespace kernel::EntryValueStream
