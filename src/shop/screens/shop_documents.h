#pragma once

#include "platform/report/further_documents.h"

namespace shop::screens {

/// Returns the documents of an order for the preview: cutting list, bar plan, glass list, mesh
/// list, labels on one of three papers, how each size was computed, and the remake slip of one
/// part, with the command "הגדרות מוטות". The stored lines are read when the first of them is made,
/// and again after the settings have been changed. Errors are shown in a message box; then nothing
/// is made.
report::FurtherDocuments documentsOf(const QString& storePath, int order);

} // namespace shop::screens
