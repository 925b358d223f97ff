#pragma once
// The sites whose pages are killed while "Kill Popups by Address" is on: the
// hosts of the addresses that "Add Page to Block List" was given, in the
// user's "BlockList.txt".
#include "SiteList.h"

class KillList : public SiteList
{
public:
    explicit KillList(const platform::ProgramFolder& folder)
        : SiteList(folder, QStringLiteral("BlockList.txt"))
    {
    }
    explicit KillList(platform::ProgramFolder&&) = delete;
};
