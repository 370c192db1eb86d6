#include "imports/formats/formula.h"

#include <cstddef>
#include <optional>
#include <string>

#include "imports/decimal.h"
#include "imports/formats/conf_lines.h"
#include "imports/formats/ratio.h"
#include "losses/ledger.h"

namespace rux::imports {
namespace {

using losses::Reason;

Formula NotPlain(Reason reason) { return {{}, {}, reason}; }

Formula WithParts(const std::optional<Ratio>& factor, const std::optional<Ratio>& offset) {
  if (!factor || !offset) return NotPlain(Reason::kDoesNotFit);
  return {*factor, *offset, {}};
}

Formula Added(const Formula& a, const Formula& b) {
  if (!a.IsPlain()) return a;
  if (!b.IsPlain()) return b;
  return WithParts(Sum(a.factor, b.factor), Sum(a.offset, b.offset));
}

Formula Negated(const Formula& a) { return {Negative(a.factor), Negative(a.offset), a.hindrance}; }

Formula Scaled(const Formula& a, const Ratio& number) {
  return WithParts(Product(a.factor, number), Product(a.offset, number));
}

Formula Multiplied(const Formula& a, const Formula& b) {
  if (!a.IsPlain()) return a;
  if (!b.IsPlain()) return b;
  if (b.IsNumber()) return Scaled(a, b.offset);
  return a.IsNumber() ? Scaled(b, a.offset) : NotPlain(Reason::kNotPlain);
}

Formula Divided(const Formula& a, const Formula& b) {
  if (!a.IsPlain()) return a;
  if (!b.IsPlain()) return b;
  if (!b.IsNumber()) return NotPlain(Reason::kNotPlain);
  const std::optional<Ratio> inverse = Inverse(b.offset);
  return inverse ? Scaled(a, *inverse) : NotPlain(Reason::kNotANumber);
}

// With the precedence that libsensors has: -, ^ and ` before a term apply to that term only.
class FormulaReader {
 public:
  FormulaReader(const std::string& path, const ConfLine& line, std::size_t& at)
      : path_(path), line_(line), at_(at) {}

  Formula ReadSum() {
    Formula formula = ReadProduct();
    for (;;) {
      if (Take('+')) {
        formula = Added(formula, ReadProduct());
      } else if (Take('-')) {
        formula = Added(formula, Negated(ReadProduct()));
      } else {
        return formula;
      }
    }
  }

 private:
  bool Take(char sign) {
    if (!line_.HasSign(at_, sign)) return false;
    ++at_;
    return true;
  }

  Formula ReadProduct() {
    Formula formula = ReadTerm();
    for (;;) {
      if (Take('*')) {
        formula = Multiplied(formula, ReadTerm());
      } else if (Take('/')) {
        formula = Divided(formula, ReadTerm());
      } else {
        return formula;
      }
    }
  }

  Formula ReadTerm() {
    if (depth_ == kDeepestFormula)
      RefuseConf(path_, line_.number, "the formula is nested too deep");
    ++depth_;
    const Formula formula = ReadNested();
    --depth_;
    return formula;
  }

  Formula ReadNested() {
    if (Take('-')) return Negated(ReadTerm());
    if (Take('^') || Take('`')) {
      ReadTerm();
      return NotPlain(Reason::kNotPlain);
    }
    if (Take('@')) return {{1, 1}, {}, {}};
    if (Take('(')) {
      const Formula formula = ReadSum();
      if (!Take(')')) line_.RefuseAt(path_, at_, ")");
      return formula;
    }
    return ReadPlain();
  }

  Formula ReadPlain() {
    if (line_.Has(at_, ConfToken::Kind::kName)) {
      ++at_;
      return NotPlain(Reason::kKnownAtRunTime);
    }
    if (!line_.Has(at_, ConfToken::Kind::kNumber)) line_.RefuseAt(path_, at_, "a number");
    const std::optional<Decimal> number = Decimal::In(line_.tokens[at_++].source);
    return WithParts(Ratio{}, number ? RatioOf(*number) : std::nullopt);
  }

  const std::string& path_;
  const ConfLine& line_;
  std::size_t& at_;
  int depth_ = 0;
};

}  // namespace

Formula ReadFormula(const std::string& path, const ConfLine& line, std::size_t& at) {
  return FormulaReader(path, line, at).ReadSum();
}

bool AreOpposite(const Formula& formula, const Formula& other) {
  if (!formula.IsPlain() || !other.IsPlain()) return false;
  const std::optional<Ratio> factor = Product(formula.factor, other.factor);
  const std::optional<Ratio> offset = Product(formula.factor, other.offset);
  const std::optional<Ratio> rest = offset ? Sum(*offset, formula.offset) : std::nullopt;
  return factor == Ratio{1, 1} && rest == Ratio{};
}

}  // namespace rux::imports
