#pragma once

#include <interchange/importer/FlatWriter.h>

#include <assimp/ProgressHandler.hpp>

/// Puts into the answer how far the library has come, whenever it has come a good deal further.
class ProgressTeller : public Assimp::ProgressHandler
{
public:
    explicit ProgressTeller(interchange::FlatWriter &writer) : m_writer(writer) {}

    bool Update(float share) override
    {
        if (share >= m_told + 0.01F && share <= 1) {
            m_told = share;
            m_writer.progress(share);
        }
        return true;
    }

private:
    interchange::FlatWriter &m_writer;
    float m_told = 0;
};
