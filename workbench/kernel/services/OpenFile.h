#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QByteArray>
#include <QString>

#include <functional>

namespace kernel {

/// An open file of the system, closed at the latest when this goes. Calls go through FileCalls; those that are
/// interrupted or fall short are continued.
class NK_KERNEL_SERVICES_EXPORT OpenFile
{
    Q_DISABLE_COPY(OpenFile)
public:
    OpenFile() = default;
    ~OpenFile();

    /// @param flags and mode as open(2) takes them; close-on-exec is added
    bool open(const QString &path, int flags, uint mode = 0);
    /// Opens a file to be read. Whatever is no regular file is refused: a pipe would never end.
    bool openToRead(const QString &path);
    bool isOpen() const { return m_handle >= 0; }
    int handle() const { return m_handle; }

    bool write(const char *bytes, qint64 size);
    /// The whole content, from the start. False with isTooLarge() where it has more than `largest` bytes (at most
    /// 2^30), and where `goOn` said no.
    /// @param goOn told how many bytes have come of how many; may be null
    bool readAll(QByteArray &content, qint64 largest, const std::function<bool(qint64, qint64)> &goOn);
    bool sync();
    bool close();

    /// The reason of the last failure, in the system's words.
    const QString &error() const { return m_error; }
    /// The last failure was a content beyond the largest size.
    bool isTooLarge() const { return m_isTooLarge; }

    /// What errno says now, in words.
    static QString systemError();

private:
    bool fail();
    qint64 readPiece(char *bytes, qint64 size);

    int m_handle = -1;
    QString m_error;
    bool m_isTooLarge = false;
};

} // namespace kernel
