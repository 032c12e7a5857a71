#pragma once

#include "platform/report/further_documents.h"

namespace shop::screens {

/// Returns what the preview of an order offers: the documents, and the command "הגדרות מוטות"
/// (settings of bars). The documents are the cutting list, bar plan, glass list, mesh list, labels
/// on one of three papers, how each size was computed, and the remake slip of one part. The stored
/// lines are read when the first document is made, and again after the settings have been changed.
/// If an error occurs, a message box shows it and no document is made.
report::FurtherDocuments documentsOf(const QString& storePath, int order);

} // namespace shop::screens
