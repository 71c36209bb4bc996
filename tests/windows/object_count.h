// How many GDI and USER objects this process holds, to see that something done a thousand times leaves nothing behind.
#pragma once

namespace toolkit {

struct ObjectCount {
  int gdi, user;
};

// Under Wine, which counts nothing, how far its handle tables have been filled: freed places are taken again first, so
// that the figures grow with objects that are never freed and with nothing else.
ObjectCount CountObjects();

}  // namespace toolkit
