#pragma once

#include "shop/shop_plan.h"

/// The Hebrew words of the printed documents.
namespace shop::paper {

QString partWord(Part part);
QString sideWord(Side side);
/// Returns the text, or "ללא סוג" (without kind) for an empty text.
QString kindWord(const QString& kind);
/// Returns part, profile and colour as one text, such as "משקוף, פרופיל 7000, לבן".
QString groupWords(const GroupKey& group);
/// Returns one sentence that names the order line, the part and the side (width or height) that
/// cannot be made, and the reason.
QString faultWords(const Fault& fault);
/// Returns a sentence that says how many bars a better plan could save at most.
QString proofWords(const GroupPlan& plan);

} // namespace shop::paper
