#pragma once

#include "nkKernelServicesExport.h"

#include <QString>

/// The title of an undo step, with the category it belongs to.
class NK_KERNEL_SERVICES_EXPORT nkUndoString
{
public:
    nkUndoString(const QString &title) : m_title(title) {}
    /// @param category for example "Metadata Editor"; kept beside the title and never part of the text
    /// @param detail a further text kept beside the title; empty where there is none
    nkUndoString(const QString &title, const QString &category, const QString &detail)
        : m_title(title), m_category(category), m_detail(detail)
    {}

    /// The title alone: what the undo menu shows.
    QString text() const { return m_title; }
    QString category() const { return m_category; }
    QString detail() const { return m_detail; }

private:
    QString m_title;
    QString m_category;
    QString m_detail;
};
