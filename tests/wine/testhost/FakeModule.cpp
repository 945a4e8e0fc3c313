#include "FakeModule.h"

namespace {

ModuleBody g_body;

int32_t __cdecl FakeEntry(int16_t selector, void* block, intptr_t* data, int16_t* result) {
    g_body(selector, static_cast<FilterRecord*>(block), data, result);
    return 0;
}

}  // namespace

void UseFakeModule(testhost::TestHost& host, ModuleBody body) {
    g_body = std::move(body);
    host.UseEntryPoint(FakeEntry);
}

void RequestRect16(FilterRecord* record, Rect16 rect) {
    record->inRect = record->outRect = record->maskRect = rect;
    record->inLoPlane = record->outLoPlane = 0;
    record->inHiPlane = record->outHiPlane = static_cast<int16_t>(record->planes - 1);
}
