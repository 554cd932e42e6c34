#pragma once

#include <interchange/json/JsonValue.h>

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <vector>

namespace interchange {

class GltfBuffers;

/// The accessors of a glTF file: lists of numbers in its buffers, in all component types, with strides, normalized
/// and sparse ones. Every place is compared with the bytes that are there before anything is read.
class GltfAccessors
{
    Q_DECLARE_TR_FUNCTIONS(GltfAccessors)

public:
    /// Elements that one accessor may have.
    static constexpr qint64 MostElements = 64 * 1024 * 1024;
    /// The same where no bytes stand behind them, so that a file can say any number.
    static constexpr qint64 MostZeros = 4 * 1024 * 1024;

    /// @param root the file's outermost object; @param buffers outlive the accessors
    GltfAccessors(const JsonValue &root, GltfBuffers &buffers);

    /// The elements of an accessor, each of `components` numbers; normalized integers as 0 to 1 or -1 to 1.
    /// False where it cannot be read; reason() then says why.
    bool readFloats(const JsonValue &index, int components, std::vector<float> &numbers);
    /// Likewise for whole numbers without sign.
    bool readIndices(const JsonValue &index, std::vector<uint32_t> &numbers);
    /// A clause, without a capital and a full stop.
    const QString &reason() const { return m_reason; }

private:
    /// Elements as they lie in a buffer.
    struct Layout
    {
        const char *data = nullptr; ///< null: all zero
        qint64 stride = 0;
        qint64 count = 0;
        int type = 0;
        int components = 1;
        bool isNormalized = false;
    };
    struct Sparse
    {
        std::vector<uint32_t> places;
        Layout values;
    };

    JsonValue accessorAt(const JsonValue &index);
    bool layOut(const JsonValue &accessor, int components, Layout &layout);
    bool place(const JsonValue &holder, Layout &layout);
    bool readSparse(const JsonValue &accessor, const Layout &layout, Sparse &sparse);
    bool fail(const QString &reason);
    static void decode(const Layout &layout, float *numbers, qint64 element);

    std::vector<JsonValue> m_accessors;
    std::vector<JsonValue> m_views;
    GltfBuffers &m_buffers;
    QString m_reason;
};

} // namespace interchange
