#include "dialog/PreviewState.h"

bool dialogOpen = false;
bool previewFullScale = false;
int32_t previewPaneWidth = 0;
int32_t previewPaneHeight = 0;
void* previewProgressWindow = nullptr;
float sharedPreviewScale = 1.0f;
PreviewPaneRecord* activeDetailPane = nullptr;
