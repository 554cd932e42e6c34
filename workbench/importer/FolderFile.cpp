#include "FolderFile.h"

FolderFile::~FolderFile()
{
    std::fclose(m_file);
}

size_t FolderFile::Read(void *buffer, size_t size, size_t count)
{
    return buffer && size > 0 ? std::fread(buffer, size, count, m_file) : 0;
}

size_t FolderFile::Write(const void *, size_t, size_t)
{
    return 0;
}

aiReturn FolderFile::Seek(size_t offset, aiOrigin origin)
{
    const int whence = origin == aiOrigin_SET ? SEEK_SET : origin == aiOrigin_CUR ? SEEK_CUR : SEEK_END;
    return std::fseek(m_file, long(offset), whence) == 0 ? aiReturn_SUCCESS : aiReturn_FAILURE;
}

size_t FolderFile::Tell() const
{
    const long place = std::ftell(m_file);
    return place < 0 ? 0 : size_t(place);
}
