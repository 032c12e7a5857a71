#pragma once

#include "tools/store/words.h"

#include <QStringList>

namespace storetools {

/// A list of messages for the user. The list keeps the first hundred messages and only counts the
/// others.
class Report
{
public:
    void add(const QString& line)
    {
        if (lines_.size() < most)
            lines_.append(line);
        ++count_;
    }
    bool isEmpty() const { return count_ == 0; }
    QStringList lines() const
    {
        if (count_ <= most)
            return lines_;
        return lines_ + QStringList(say({u"and %1 more", u"ועוד שורות: %1"}, count_ - most));
    }

private:
    static constexpr qsizetype most = 100;
    QStringList lines_;
    qsizetype count_ = 0;
};

} // namespace storetools
