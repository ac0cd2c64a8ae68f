// zt/ga/individual.h
//
// GA_Individual: a candidate solution, an owning array of genes (ZtDynPArray<GA_Gene>). A client
// derives from it and overrides New (an empty individual of its own class), Initialize (called on
// each child once its genes are in place, e.g. to store the fitness), Mutation, and the orderings
// < and > (better individuals compare less: populations keep them first).
//
//   GA_Individual* a = MakeRandom();           // client code; individuals come from New
//   a->Multiply(*b, population);               // two children appended in sorted position
//
// Multiply is a two-point crossover over a cyclic segment. The parent with more genes (this one
// when the counts are equal) makes both children with its New; its Multiply is called with the
// roles swapped when the argument is the longer one. With L the shorter parent's gene count and
// one draw r from 0 to 32767, the segment runs from p1 = r % L for L / 2 positions (one when L is
// 1), wrapping past the end. Inside it the first child takes clones of the shorter parent's genes
// and the second child clones of the longer parent's; outside, the other way round. Positions
// from L on are cloned from the longer parent into both. Each child is then Initialize'd and
// handed to GA_Population::Append. Returns 2, the number of children added. Nothing is added
// (result 0, no draw) when the shorter parent has no genes or New returns null; the checked build
// reports both (zt/checked.h). A null gene is copied as a null gene. The parents are not changed.
//
// Copies own their genes: copy construction and assignment clone every gene through its Clone
// (a null Clone leaves an empty place). Where an owning container copies an individual (a copy of
// a population) the copy keeps its dynamic class: ZtCloner<GA_Individual> makes it with the
// source's New, clones the genes into it and calls its Initialize, so that state the client
// derives from the genes is rebuilt. An individual whose New returns null is copied as a plain
// GA_Individual.
#ifndef ZT_GA_INDIVIDUAL_H_
#define ZT_GA_INDIVIDUAL_H_

#include <memory>

#include "zt/config.h"
#include "zt/containers/clone.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/dyn_parray.h"
#include "zt/ga/gene.h"

class GA_Population;

// The owning gene array and its bases are compiled into the library.
extern template class ZT_API ZtDynArrayBase<GA_Gene*>;
extern template class ZT_API ZtDynArray<GA_Gene*>;
extern template class ZT_API ZtDynPArray<GA_Gene>;

/// A candidate solution: an owning array of genes with the client's hooks and order.
class ZT_API GA_Individual : public ZtDynPArray<GA_Gene> {
 public:
  /// No genes, no space reserved, allocation unit 10.
  GA_Individual() : ZtDynPArray<GA_Gene>(0, 10) {}
  /// Clones of src's genes, in order.
  GA_Individual(const GA_Individual& src) = default;
  /// Deletes this individual's genes, then holds clones of src's.
  GA_Individual& operator=(const GA_Individual& src) = default;
  ~GA_Individual() override;

  /// A new, empty individual of the client's class, owned by the caller. The base returns null,
  /// which makes Multiply add no children: a client that evolves a population overrides it.
  virtual GA_Individual* New() const;
  /// Called by Multiply on each child once all its genes are in place. Does nothing here.
  virtual void Initialize();
  /// A new mutant derived from this individual, owned by the caller, or null for none (the base).
  virtual GA_Individual* Mutation() const;
  /// Crossover with `other`; the children go into `population`. Returns how many were added.
  virtual ZtLong Multiply(const GA_Individual& other, GA_Population& population) const;
  /// The population's order; false in the base, so every individual ties with every other.
  virtual bool operator<(const GA_Individual& other) const;
  virtual bool operator>(const GA_Individual& other) const;
};

/// Owning containers copy an individual as its dynamic class: made by New, genes cloned, then
/// Initialize'd. A null New gives a plain GA_Individual with cloned genes.
template <>
struct ZtCloner<GA_Individual> {
  static GA_Individual* Clone(const GA_Individual& src) {
    std::unique_ptr<GA_Individual> copy(src.New());
    if (copy == nullptr) return new GA_Individual(src);
    *copy = src;
    copy->Initialize();
    return copy.release();
  }
};

#endif  // ZT_GA_INDIVIDUAL_H_
