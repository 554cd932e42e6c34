#pragma once

#include <assimp/IOStream.hpp>

#include <cstdio>

/// A file that FolderGate has let in, for reading only.
class FolderFile : public Assimp::IOStream
{
public:
    /// @param file becomes this object's @param size in bytes
    FolderFile(FILE *file, size_t size) : m_file(file), m_size(size) {}
    FolderFile(const FolderFile &) = delete;
    FolderFile &operator=(const FolderFile &) = delete;
    ~FolderFile() override;

    size_t Read(void *buffer, size_t size, size_t count) override;
    size_t Write(const void *buffer, size_t size, size_t count) override;
    aiReturn Seek(size_t offset, aiOrigin origin) override;
    size_t Tell() const override;
    size_t FileSize() const override { return m_size; }
    void Flush() override {}

private:
    FILE *m_file;
    size_t m_size;
};
