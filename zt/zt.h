// zt/zt.h
//
// Includes every public header of the zt library.
//
//   #include <zt/zt.h>
//   ZtDynArray<int> a;  a << 1 << 2;
#ifndef ZT_ZT_H_
#define ZT_ZT_H_

#include "zt/bits/bit_array.h"
#include "zt/bits/bit_data.h"
#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/array.h"
#include "zt/containers/clone.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/list.h"
#include "zt/containers/list_quene.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/push_var.h"
#include "zt/containers/quene.h"
#include "zt/containers/xlist.h"
#include "zt/events/events.h"
#include "zt/ga/gene.h"
#include "zt/ga/individual.h"
#include "zt/ga/population.h"
#include "zt/graph/graph.h"
#include "zt/graph/graph_path.h"
#include "zt/rtclass/run_time_class.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"
#include "zt/streams/stream.h"
#include "zt/tasks/tasks.h"
#include "zt/text/label.h"
#include "zt/text/string.h"

#endif  // ZT_ZT_H_
