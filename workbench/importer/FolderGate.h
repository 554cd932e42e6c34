#pragma once

#include <assimp/IOSystem.hpp>

#include <set>
#include <string>

/// The library's only way to files: it opens the model and, for reading, plain files of known kinds in the model's
/// folder and below it, wherever paths and links seem to lead.
class FolderGate : public Assimp::IOSystem
{
public:
    /// @param model absolute path as the person has it; the folder is where that stands, also where it is a link
    explicit FolderGate(const std::string &model);

    /// Paths that files were asked for and that lead elsewhere; relative to the folder where they begin there.
    const std::set<std::string> &refused() const { return m_refused; }

    bool Exists(const char *path) const override;
    char getOsSeparator() const override { return '/'; }
    Assimp::IOStream *Open(const char *path, const char *mode) override;
    void Close(Assimp::IOStream *file) override;
    bool CreateDirectory(const std::string &) override { return false; }
    bool ChangeDirectory(const std::string &) override { return false; }
    bool DeleteFile(const std::string &) override { return false; }

private:
    std::string absolute(const char *path) const;
    std::string relative(const std::string &path) const;
    bool isInside(const std::string &real) const;
    bool mayOpen(const std::string &path) const;
    int openPlain(const std::string &path) const;

    std::string m_model;
    std::string m_folder; ///< without links, with a slash at the end
    mutable std::set<std::string> m_refused;
};
