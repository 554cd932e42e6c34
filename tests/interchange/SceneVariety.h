#pragma once

#include "Fixtures.h"

#include <algorithm>

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
    // Another order and another choice each time, but never without one of each type.
    for (int i = 0; i < variant % all.size(); ++i)
        all.move(all.size() - 1, 0);
    QByteArrayList chosen = variant % 3 == 0 ? all : all.mid(0, 6 + variant % 20);
    for (const char *type :
         {"\"text\"", "\"int\"", "\"float\"", "\"yes\"", "\"tag\"", "\"list\"", "\"nested\""}) {
        const auto isOfType = [type](const QByteArray &member) { return member.startsWith(type); };
        if (std::none_of(chosen.cbegin(), chosen.cend(), isOfType))
            chosen.append(*std::find_if(all.cbegin(), all.cend(), isOfType));
    }
    return chosen;
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

/// An annex that makes the last node a sceneplate, puts a material into a group that has entries, and hides a node
/// that was deleted.
inline QByteArray annex()
{
    return R"("metadataEditor": {"version":1,"sets":{"format":"metadata-sets","version":1,"sets":[]},"assets":[],)"
           R"("objects":[{"node":3,"name":"Bare","sceneplate":{"image":"sky.png","placement":"inFront"}},)"
           R"({"group":0,"name":"Group","own":{"name":"","color":"#7f8c9b","entries":[)"
           R"({"key":"text","type":"string","value":"oak"},{"key":"int","type":"integer","value":1},)"
           R"({"key":"float","type":"float","value":1.5},{"key":"yes","type":"boolean","value":true},)"
           R"({"key":"tag","type":"tag"},{"key":"list","type":"list","value":[1]}]}}],"assigned":[],)"
           R"("materials":[{"group":"Group"},{"material":0,"name":"Paint","in":0},{"material":1,"name":"Plain"}],)"
           R"("removed":[{"node":4,"name":"Gone"}]})";
}

/// The JSON text of one of the files.
inline QByteArray json(int variant)
{
    const auto with = [variant](int offset) { return "\"extras\": " + extras(variant + offset); };
    const bool hasAnnex = variant % 6 == 1;
    const QByteArray bare = variant % 5 == 0   ? ",\"extras\":[1,2]"
                            : variant % 5 == 1 ? ",\"extras\":{}"
                                               : ',' + with(4);
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
                      + bare + '}' + (hasAnnex ? ",{\"name\":\"Gone\",\"extras\":{\"a\":1}}" : "")
                      + "],\n"
                        "  \"materials\":[{"
                      + with(3) + ",\"name\":\"Paint\"},{\"name\":\"Plain\"}]";
    if (variant % 2 == 0)
        text += ",\n  \"extras\": {\"of the root\": [1, 2]}";
    if (hasAnnex)
        text += ",\n  \"scenes\":[{\"nodes\":[0]}],\n  \"extras\": {" + annex() + '}';
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
