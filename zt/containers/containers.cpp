// The container instantiations compiled into the library. Clients of these element types link
// against these copies; the headers declare them extern.
#include "zt/containers/array.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/list.h"
#include "zt/containers/list_quene.h"

template class ZT_INSTANTIATION_API ZtDynArrayBase<char>;
template class ZT_INSTANTIATION_API ZtDynArray<char>;
template class ZT_INSTANTIATION_API ZtArray<char>;
template class ZT_INSTANTIATION_API ZtArray<wchar_t>;

// Used inside the library (the storage of the hit queue); not exported.
template class ZtList<ZtLong>;
