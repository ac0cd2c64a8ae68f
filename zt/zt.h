// zt/zt.h
//
// Includes every public header of the zt library.
//
//   #include <zt/zt.h>
//   ZtDynArray<int> a;  a << 1 << 2;
#ifndef ZT_ZT_H_
#define ZT_ZT_H_

#include "zt/config.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/list.h"
#include "zt/containers/list_quene.h"
#include "zt/containers/push_var.h"
#include "zt/containers/quene.h"
#include "zt/containers/xlist.h"

#endif  // ZT_ZT_H_
