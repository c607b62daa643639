#include "OrderJson.h"

namespace genvara {

void OrderMember(JsonText& json, std::string_view name, const LoadOrder& order) {
    json.Key(name).BeginArray();
    for (const auto& loads : order) {
        json.BeginArray();
        for (const LoadPlace& place : loads) {
            json.Value(PlaceText(place));
        }
        json.EndArray();
    }
    json.EndArray();
}

}  // namespace genvara
