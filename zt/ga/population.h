// zt/ga/population.h
//
// GA_Population: the individuals of a genetic algorithm, an owning list (ZtPDList<GA_Individual>)
// kept in the individuals' order, and the generation loop. A client derives from it to override
// IsContinue (asked before every mating and every mutation; false ends that phase) and Step
// (called after each).
//
//   population.Append(individual);             // sorted insertion; the population owns it
//   while (!done) population.Evolve();         // one generation per call
//
// Append places an individual with the owning list's BFindDataTo over the whole list and inserts
// it before the cursor: an individual that compares less than the first goes first, one greater
// than the last goes last, and one that ties goes before the tied element the binary search meets
// first (with the base orderings, which tie everything, before element (length - 1) / 2). It
// never removes anything; a null individual is ignored. The population owns the individual from
// the call on, also when the insertion throws (it is then deleted).
//
// Evolve makes one generation. Draws r come from std::rand (0 to 32767), so std::srand steers
// them. With n individuals at the start, snapshot S in list order:
//   1. Mating: for i from 0 while i < n and IsContinue(): one draw r; S[last - k] with
//      k = floor(sqrt(r % (n * n))) mates with S[i], then S[r % n] mates with S[i] (Multiply,
//      result unused); Step(). The front of the order is favoured as rank-weighted partner.
//      Children are not in the snapshot and do not mate in their first generation.
//   2. Trimming: DelTail while the length exceeds GetMaxNum(); the virtual DelCur deletes the
//      last individual before unlinking it, so its destructor still finds it in the population.
//      An empty population, or a DelCur that removes nothing, stops it.
//   3. Mutation: GetMaxNum() * GetMutationRatio() / 100 attempts (32-bit arithmetic, truncated)
//      while IsContinue(): one draw r; the individual at r % length gives Mutation(), which is
//      appended (null adds nothing); Step(). Skipped when the population is empty (which the
//      checked build reports when there are attempts to make, zt/checked.h).
//   4. The generation counter grows by one, also when IsContinue stopped a phase.
// Empty places (null individuals) in the list neither mate nor mutate. The list's cursor is left
// where the last insertion or pick put it. Hooks must not delete individuals during mating: the
// snapshot still points to them.
//
// Copies own their individuals: copy construction and assignment clone each one as its dynamic
// class (see individual.h) and copy the limit, the ratio and the generation counter.
#ifndef ZT_GA_POPULATION_H_
#define ZT_GA_POPULATION_H_

#include "zt/config.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/ga/individual.h"

// The owning list of individuals and its bases are compiled into the library.
extern template class ZT_API ZtDynArrayBase<GA_Individual*>;
extern template class ZT_API ZtList<GA_Individual*>;
extern template class ZT_API ZtDList<GA_Individual*>;
extern template class ZT_API ZtPDList<GA_Individual>;

// Append hides the list's virtual Append on purpose; the compilers' warning about it is silenced
// for this class only.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
/// The individuals in their order, with the size limit, the mutation ratio and the generation
/// loop.
class ZT_API GA_Population : public ZtPDList<GA_Individual> {
 public:
  /// Empty; limit 100, mutation ratio 10 %, generation 0.
  GA_Population() : ZtPDList<GA_Individual>(0) {}
  /// Clones of src's individuals (each as its dynamic class), then src's three settings.
  GA_Population(const GA_Population& src) = default;
  /// Deletes this population's individuals, holds clones of src's and copies its settings.
  GA_Population& operator=(const GA_Population& src) = default;
  ~GA_Population() override;

  /// The size that Evolve trims the population back to; stored as given.
  void SetMaxNum(ZtLong maxNum) { m_maxNum = maxNum; }
  ZtLong GetMaxNum() const { return m_maxNum; }
  /// Mutation attempts per generation, as a percentage of the limit; stored as given.
  void SetMutationRatio(ZtLong ratio) { m_mutationRatio = ratio; }
  ZtLong GetMutationRatio() { return m_mutationRatio; }

  /// Sorted insertion of `individual`, which the population owns from now on; null is ignored.
  /// It hides the list's Append, which a ZtPDList<GA_Individual>& still reaches.
  void Append(GA_Individual* individual);

  /// Asked before every mating and every mutation of Evolve; false ends the phase. True here.
  virtual bool IsContinue();
  /// Called after every mating and every mutation attempt of Evolve. Does nothing here.
  virtual void Step();
  /// One generation: mating, trimming, mutation, and the generation counter.
  virtual void Evolve();

 protected:
  ZtLong m_maxNum = 100;        ///< the size Evolve trims back to
  ZtLong m_mutationRatio = 10;  ///< mutation attempts per generation, % of m_maxNum
  ZtLong m_generation = 0;      ///< completed Evolve calls; the library never reads it
};
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#endif  // ZT_GA_POPULATION_H_
