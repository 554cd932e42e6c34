#pragma once

#include "Fixtures.h"

/// Thirty scene files with every JSON type on every kind of object, in different layouts.
namespace SceneVariety {

constexpr int Count = 30;

/// One value of every type, and of everything that becomes no entry; some with odd spelling.
inline QByteArrayList members(int variant)
{
    QByteArrayList all{R"("text":"pl\u0061in é 𝄞")",
                       R"("empty":"")",
                       R"("int":-3)",
                       R"("zero":0)",
                       R"("minus zero":-0.0)",
                       R"("float":1.50)",
                       R"("exponent":1E+3)",
                       R"("whole":2.0)",
                       R"("long":9007199254740993)",
                       R"("huge":1e400)",
                       R"("tiny":1e-400)",
                       R"("yes":true)",
                       R"("no":false)",
                       R"("tag":null)",
                       R"("list":[1, 2.50 ,"a",null,true])",
                       R"("none":[])",
                       R"("longs":[5000000000,1e999])",
                       R"("nested":{"a":1,"b":{"c":"d","e":[1]}})",
                       R"("matrix":[[1,0],[0,1]])",
                       R"("objects":[{"a":1}])",
                       R"("hollow":{})",
                       R"("twice":1,"twice":2)",
                       R"("":"no key")",
                       R"("a.b":1)",
                       R"("a":{"b":2})",
                       R"("odd \"key\"\n<b>&%1":"\ud800")"};
    // Another order and another choice each time.
    for (int i = 0; i < variant % all.size(); ++i)
        all.move(all.size() - 1, 0);
    return variant % 3 == 0 ? all : all.mid(0, 6 + variant % 20);
}

inline QByteArray extras(int variant)
{
    const QByteArrayList all = members(variant);
    switch (variant % 4) {
    case 0:
        return '{' + all.join(',') + '}';
    case 1:
        return "{\n        " + all.join(",\n        ") + "\n      }";
    case 2:
        return "{ " + all.join(", ") + " }";
    default:
        return "{\r\n\t" + all.join(" ,\r\n\t") + "}";
    }
}

/// The JSON text of one of the files.
inline QByteArray json(int variant)
{
    const auto with = [variant](int offset) { return "\"extras\": " + extras(variant + offset); };
    const QByteArray bare = variant % 5 == 0 ? ",\"extras\":[1,2]" : variant % 5 == 1 ? ",\"extras\":{}" : "";
    QByteArray text = "{\"asset\":{\"version\":\"2.0\",\"extras\":{\"mine\":1}},\n"
                      "  \"extensions\":{\"KHR_lights_punctual\":{\"lights\":[{\"type\":\"point\"}]}},\n"
                      "  \"cameras\":[{\"type\":\"perspective\",\"extras\":{\"lens\":1}}],\n"
                      "  \"nodes\":[{\"name\":\"Part\",\"children\":[1,2,3],"
                      + with(0)
                      + "},\n"
                        "    {\"camera\":0,"
                      + with(1)
                      + "},\n"
                        "    {"
                      + with(2)
                      + ",\"extensions\":{\"KHR_lights_punctual\":{\"light\":0}}},\n"
                        "    {\"name\":\"Bare\""
                      + bare
                      + "}],\n"
                        "  \"materials\":[{"
                      + with(3) + ",\"name\":\"Paint\"},{\"name\":\"Plain\"}]";
    if (variant % 2 == 0)
        text += ",\n  \"extras\": {\"of the root\": [1, 2]}";
    return text + (variant % 3 == 0 ? "\n}\n" : "}");
}

/// A file: text, or binary with geometry behind the text.
inline QByteArray file(int variant)
{
    const QByteArray text = json(variant);
    if (variant % 3 != 1)
        return variant % 7 == 2 ? QByteArray("\xef\xbb\xbf") + text : text;
    if (variant % 2 == 0)
        return Fixtures::glbOf(text);
    // Padded with zeros, as some programs do, and with two more chunks.
    const QByteArray padded = text + QByteArray((4 - text.size() % 4) % 4, '\0');
    return Fixtures::glb(Fixtures::chunk("JSON", padded)
                         + Fixtures::chunk(QByteArray("BIN\0", 4), QByteArray(12, 'y'))
                         + Fixtures::chunk("XTRA", "1234"));
}

} // namespace SceneVariety
