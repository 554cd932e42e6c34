#pragma once

#include <assimp/IOStream.hpp>

#include <cstdio>
#include <string>

/// A file that FolderGate has let in, for reading only. Text in UTF-16 reads as UTF-8.
class FolderFile : public Assimp::IOStream
{
public:
    /// @param file becomes this object's @param size in bytes
    FolderFile(FILE *file, size_t size) : m_file(file), m_size(size) {}
    FolderFile(const FolderFile &) = delete;
    FolderFile &operator=(const FolderFile &) = delete;
    ~FolderFile() override;

    /// To be called before anything else, for files that hold text.
    void readUtf16();

    size_t Read(void *buffer, size_t size, size_t count) override;
    size_t Write(const void *buffer, size_t size, size_t count) override;
    aiReturn Seek(size_t offset, aiOrigin origin) override;
    size_t Tell() const override;
    size_t FileSize() const override { return m_size; }
    void Flush() override {}

private:
    bool beginsAsUtf16();

    FILE *m_file;
    size_t m_size;
    std::string m_text; ///< what m_file reads then
};
