// zt/containers/quene.h
//
// ZtQuene<T>: the abstract first-in, first-out queue. It has no data and exactly seven pure
// operations, in this order: Clear, GetCount, operator[], GetHead, GetTail, Push, Pop.
//
// The find-all searches of the containers and strings take a ZtQuene<ZtLong>& and Push the index
// of every hit in ascending order, ignoring Push's result; they never clear the queue first and
// return its GetCount() afterwards, so earlier hits still queued are counted too. Any class that
// implements the seven operations can be passed; a full bounded queue just loses the index.
//
//   ZtListQuene<ZtLong> hits;
//   ZtLong n = array.Find(x, hits, 0, -1);   // hits[0] is the first matching index
//
// The interface is destroyed through its concrete type: the destructor is protected and not
// virtual, so deleting a queue through a ZtQuene<T>* does not compile.
#ifndef ZT_CONTAINERS_QUENE_H_
#define ZT_CONTAINERS_QUENE_H_

#include "zt/config.h"

/// Abstract FIFO queue. Element 0 is the head: the next element Pop returns.
template <class T>
class ZtQuene {
 public:
  /// Removes every element; GetCount() is 0 afterwards.
  virtual void Clear() = 0;
  virtual ZtLong GetCount() const = 0;
  /// Element i counted from the head.
  virtual T& operator[](ZtLong i) = 0;
  /// Copies the head into `out`; false, `out` untouched, when the queue is empty.
  virtual bool GetHead(T& out) = 0;
  /// Copies the most recently pushed element into `out`; false when the queue is empty.
  virtual bool GetTail(T& out) = 0;
  /// Adds `v` behind the tail; false, adding nothing, when the queue is full.
  virtual bool Push(const T& v) = 0;
  /// Moves the head into `out` and removes it; false, `out` untouched, when the queue is empty.
  virtual bool Pop(T& out) = 0;

 protected:
  ZtQuene() = default;
  ZtQuene(const ZtQuene&) = default;
  ZtQuene& operator=(const ZtQuene&) = default;
  ~ZtQuene() = default;
};

#endif  // ZT_CONTAINERS_QUENE_H_
