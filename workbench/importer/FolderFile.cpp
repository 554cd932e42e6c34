#include "FolderFile.h"

#include "Utf16.h"

FolderFile::~FolderFile()
{
    std::fclose(m_file);
}

bool FolderFile::beginsAsUtf16()
{
    std::string mark(2, '\0');
    const size_t read = std::fread(&mark[0], 1, mark.size(), m_file);
    std::rewind(m_file);
    return read == mark.size() && Utf16::toUtf8(mark).has_value();
}

void FolderFile::readUtf16()
{
    if (!beginsAsUtf16())
        return;
    std::string bytes(m_size, '\0');
    bytes.resize(std::fread(&bytes[0], 1, bytes.size(), m_file));
    std::rewind(m_file);
    m_text = Utf16::toUtf8(bytes).value_or(std::string());
    FILE *text = m_text.empty() ? nullptr : fmemopen(&m_text[0], m_text.size(), "rb");
    if (!text)
        return;
    std::fclose(m_file);
    m_file = text;
    m_size = m_text.size();
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
