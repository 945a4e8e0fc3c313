// Rectangle accessors over the host's 16-bit fields, or its 32-bit fields
// when the big-document block is in use.
#include "plugin/FilterGlobals.h"
#include "plugin/HostServices.h"

namespace {

BigDocumentStruct* BigDocument() {
    if (gFilterRecord == nullptr) return nullptr;
    BigDocumentStruct* big = gFilterRecord->bigDocumentData;
    return big != nullptr && big->PluginUsing32BitCoordinates != 0 ? big : nullptr;
}

Rect16 Narrow(const VRect& r) {
    return Rect16{static_cast<int16_t>(r.top), static_cast<int16_t>(r.left),
                  static_cast<int16_t>(r.bottom), static_cast<int16_t>(r.right)};
}

VRect Widen(const Rect16& r) { return VRect{r.top, r.left, r.bottom, r.right}; }

Rect16 Get(VRect BigDocumentStruct::*wide, Rect16 FilterRecord::*narrow) {
    if (BigDocumentStruct* big = BigDocument()) return Narrow(big->*wide);
    if (gFilterRecord == nullptr) return Rect16{0, 0, 0, 0};
    return gFilterRecord->*narrow;
}

void Set(VRect BigDocumentStruct::*wide, Rect16 FilterRecord::*narrow, Rect16 r) {
    if (BigDocumentStruct* big = BigDocument()) {
        big->*wide = Widen(r);
    } else if (gFilterRecord != nullptr) {
        gFilterRecord->*narrow = r;
    }
}

}  // namespace

Rect16 GetFilterRect() { return Get(&BigDocumentStruct::filterRect32, &FilterRecord::filterRect); }
Rect16 GetInRect() { return Get(&BigDocumentStruct::inRect32, &FilterRecord::inRect); }
Rect16 GetOutRect() { return Get(&BigDocumentStruct::outRect32, &FilterRecord::outRect); }

void SetInRect(Rect16 r) { Set(&BigDocumentStruct::inRect32, &FilterRecord::inRect, r); }
void SetOutRect(Rect16 r) { Set(&BigDocumentStruct::outRect32, &FilterRecord::outRect, r); }
void SetMaskRect(Rect16 r) { Set(&BigDocumentStruct::maskRect32, &FilterRecord::maskRect, r); }

bool SetRect(Rect16* r, int16_t left, int16_t top, int16_t right, int16_t bottom) {
    if (r == nullptr) return false;
    r->left = left;
    r->top = top;
    r->right = right;
    r->bottom = bottom;
    return true;
}
