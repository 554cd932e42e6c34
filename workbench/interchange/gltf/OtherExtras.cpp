#include <interchange/gltf/OtherExtras.h>

#include <interchange/ImportReport.h>
#include <interchange/json/JsonPath.h>
#include <interchange/json/JsonValue.h>

namespace interchange {

namespace {

const QLatin1String ExtrasKeyword("extras");

} // namespace

void reportOtherExtras(const JsonValue &root, ImportReport &report)
{
    for (const JsonValue member : root.children()) {
        const QString key = member.key();
        if (key == QLatin1String("nodes") || key == QLatin1String("materials"))
            continue;
        if (member.isObject() && key != ExtrasKeyword && member.find(ExtrasKeyword).isPresent())
            report.addUntouched(JsonPath().append(key).append(ExtrasKeyword).text(),
                                ImportReason::OtherOwner);
        if (!member.isArray())
            continue;
        quint32 index = 0;
        for (const JsonValue element : member.children()) {
            if (element.find(ExtrasKeyword).isPresent())
                report.addUntouched(JsonPath().append(key).append(index).append(ExtrasKeyword).text(),
                                    ImportReason::OtherOwner);
            ++index;
        }
    }
}

} // namespace interchange
