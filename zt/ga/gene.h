// zt/ga/gene.h
//
// GA_Gene: the base class of a genetic algorithm's genes. It holds no data; a client gene class
// adds its own and overrides Clone, through which individuals copy their genes (children in
// Multiply, copies of individuals and populations).
//
//   struct Bit : GA_Gene { int v; GA_Gene* Clone() const override { return new Bit(*this); } };
//   GA_Gene* copy = bit.Clone();    // the caller owns the copy
//
// The comparisons work by identity: two genes are == only when they are the same object, and <
// and > order their addresses. A client class that wants value comparisons declares its own.
#ifndef ZT_GA_GENE_H_
#define ZT_GA_GENE_H_

#include <functional>

#include "zt/config.h"

/// One gene. Copying copies nothing; the comparisons are by object identity and address.
class ZT_API GA_Gene {
 public:
  GA_Gene() = default;
  GA_Gene(const GA_Gene& src) = default;
  GA_Gene& operator=(const GA_Gene& src) = default;

  /// A new heap copy of the gene, owned by the caller. The base class has nothing to copy and
  /// returns null; individuals then hold an empty place where the copy would be.
  virtual GA_Gene* Clone() const;
  virtual ~GA_Gene();

  /// True only when both operands are the same object.
  bool operator==(const GA_Gene& other) const { return this == &other; }
  bool operator!=(const GA_Gene& other) const { return this != &other; }
  /// Address order.
  bool operator<(const GA_Gene& other) const { return std::less<>()(this, &other); }
  bool operator>(const GA_Gene& other) const { return std::less<>()(&other, this); }
};

#endif  // ZT_GA_GENE_H_
