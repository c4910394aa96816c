#pragma once

#include <zuk.h>

#include <string>

class Node;

// Reads both files that a scanner run left. 0; 204 when the output file is not well formed, with no
// results; 205 when the warning file is not, with the results kept.
int SW_ParseOutput(ZUKSwCtx* ctx, std::wstring outputPath, std::wstring warningPath);

// These append to what the context holds and rebuild the arrays that queries hand out without releasing
// the earlier ones, so they follow SW_deleteResults. 0, or 3 for a null context.
int SW_parseOutData(ZUKSwCtx* ctx, const Node* root);
int SW_parseMatchedSignature(ZUKSwCtx* ctx, const Node* element);
int SW_parseWarnData(ZUKSwCtx* ctx, const Node* root);
