// See resolver.h. Tested by the cases in tests/golden/language/links.
//
// The pass knows of each statement as much as its names need: the value of the expression in
// front of the token (`statement_.value`), which a "." asks for its members, the values in front of
// the open parentheses, the With blocks, and whether an "=" would be an assignment.
#include "vb/resolver.h"

#include <array>
#include <utility>

#include "vb/scope.h"
#include "vb/token_cursor.h"
#include "vb/with_blocks.h"

namespace tintline::vb {

namespace {

// A function that no declaration hides.
bool isReservedFunction(Word word) {
  return word == Word::Date || word == Word::Len || word == Word::String ||
         word == Word::ReservedFunction;
}

// What an expression is, as far as its members are known.
struct Value {
  enum class Kind : std::uint16_t {  // (so wide that a Value has no holes: it is set at once)
    Unknown,
    Instance,  // of the module `index`
    Record,    // of the Type `index`
    Enum,      // the Enum `index` itself
    Module,    // the standard module `index` itself
    Project
  };
  Kind kind = Kind::Unknown;
  bool isArray = false;
  bool takesArguments = false;  // a call that still lacks its arguments
  std::uint32_t index = 0;
};

// What a token does to what is known of its statement.
enum class Step : std::uint8_t {
  Gap,
  StatementEnd,
  Directive,
  Member,
  Open,
  Close,
  Equals,
  OtherMark,
  Keyword,
  Label,
  Name,
  Operand
};

// By the first character of operators and punctuation, behind them by the kind of others.
constexpr std::size_t kKinds = 0x100;
constexpr auto kSteps = [] {
  std::array<Step, kKinds + static_cast<std::size_t>(TokenKind::End) + 1> steps{};
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const auto kind = static_cast<TokenKind>(i - kKinds);
    steps[i] = i < kKinds         ? Step::OtherMark
               : isNameKind(kind) ? Step::Name
               : isGap(kind)      ? Step::Gap
                                  : Step::Operand;
  }
  steps[u8'.'] = steps[u8'!'] = Step::Member;
  steps[u8'('] = Step::Open;
  steps[u8')'] = Step::Close;
  steps[u8':'] = Step::StatementEnd;
  steps[u8'='] = Step::Equals;
  const auto at = [&steps](TokenKind kind) -> Step& {
    return steps[kKinds + static_cast<std::size_t>(kind)];
  };
  at(TokenKind::LineEnd) = at(TokenKind::Comment) = Step::StatementEnd;
  at(TokenKind::Directive) = Step::Directive;
  at(TokenKind::Keyword) = at(TokenKind::OperatorWord) = Step::Keyword;
  at(TokenKind::Label) = Step::Label;
  return steps;
}();

class Resolver {
 public:
  Resolver(const Module& module, std::uint32_t index, const ProjectTables& tables)
      : module_(module), index_(index), tables_(tables), scope_(module, index, tables) {}

  std::vector<Reference> run() {
    at_ = module_.header.end;
    do toNextDeclaration();
    while (nextName_ < at_);
    references_.reserve(module_.tokens.size() / 8);
    startStatement();
    while (kind() != TokenKind::End) token();
    return std::move(references_);
  }

 private:
  // The expression that a statement begins with: an "=" behind it assigns to it.
  enum class Target : std::uint8_t { Awaited, Open, None };

  // What is known of the statement up to the token.
  struct Statement {
    Value value;                            // of what stands in front of the token
    std::uint32_t targetReference = kNone;  // of the target's last name
    std::uint32_t targetMember = kNone;
    Word firstWord = Word::None, lastWord = Word::None;  // keywords
    Target target = Target::Awaited;
    bool targetOwn = false;
    Accessor assigned = Accessor::Let;
    bool behindOperand = false;
    bool typeExpected = false, eventExpected = false;
    bool isNew = false;   // New, not As New, stands in front of the type
    bool typeOf = false;  // its Is has not come yet
  };

  TokenKind kind() const { return module_.tokens[at_].kind; }
  Word word() const { return module_.tokens[at_].word; }
  char8_t character(std::uint32_t token) const { return module_.text[module_.tokens[token].begin]; }

  // ---------------------------------------------------------------------------- tokens

  Step step() const {
    const bool isMark = kind() == TokenKind::Punctuation || kind() == TokenKind::Operator;
    const std::size_t ofKind = kKinds + static_cast<std::size_t>(kind());
    return kSteps[isMark ? character(at_) : ofKind];
  }

  void token() {
    switch (step()) {
      case Step::Gap:
        ++at_;
        return;
      case Step::StatementEnd:
        ++at_;
        return startStatement();
      case Step::Directive:
        return directive();
      case Step::Member:
        return member();
      case Step::Open:
        return openParenthesis();
      case Step::Close:
        ++at_;
        statement_.value = {};
        statement_.behindOperand = true;
        if (open_.empty()) return;
        statement_.value = open_.back();
        open_.pop_back();
        return;
      case Step::Equals:
        if (open_.empty() && statement_.target == Target::Open) assign();
        return otherMark();
      case Step::OtherMark:
        return otherMark();
      case Step::Keyword:
        return keyword();
      case Step::Label:
        return label();
      case Step::Name:
        return name();
      case Step::Operand:
        ++at_;
        return otherOperand();
    }
  }

  void startStatement() {
    if (std::exchange(withPending_, false)) withs_.open(statement_.value);
    if (at_ >= scope_.procedureEnd()) leaveProcedure();
    statement_ = {};
    open_.clear();
  }

  void leaveProcedure() {
    scope_.leave();
    withs_.clear();
  }

  // A string, number, type of the language or the like.
  void otherOperand() {
    statement_.value = {};
    statement_.behindOperand = true;
    statement_.typeExpected = statement_.isNew = statement_.eventExpected = false;
    if (open_.empty()) statement_.target = Target::None;
  }

  void otherMark() {
    ++at_;
    statement_.value = {};
    statement_.behindOperand = false;
    if (open_.empty()) statement_.target = Target::None;
  }

  void keyword() {
    const Word word = this->word();
    if (word == Word::Then || word == Word::Else) {
      ++at_;
      return startStatement();
    }
    otherKeyword(word);
    ++at_;
  }

  void otherKeyword(Word word) {
    const Word before = std::exchange(statement_.lastWord, word);
    const bool first = statement_.target == Target::Awaited && open_.empty();
    if (statement_.firstWord == Word::None) statement_.firstWord = word;
    statement_.value = {};
    statement_.behindOperand = false;
    const bool newType = statement_.typeExpected;
    statement_.typeExpected = statement_.eventExpected = statement_.isNew = false;
    switch (word) {
      case Word::Me:
        return me();
      case Word::Set:
        statement_.assigned = Accessor::Set;
        if (first) return;
        break;
      case Word::Let:
        if (first) return;
        break;
      case Word::New:
        statement_.isNew = !newType;
        statement_.typeExpected = true;
        break;
      case Word::As:
        statement_.typeExpected =
            statement_.firstWord != Word::Open && statement_.firstWord != Word::Name;
        break;
      case Word::Implements:
        statement_.typeExpected = true;
        break;
      case Word::TypeOf:
        statement_.typeOf = true;
        break;
      case Word::Is:
        statement_.typeExpected = std::exchange(statement_.typeOf, false);
        break;
      case Word::RaiseEvent:
        statement_.eventExpected = true;
        break;
      case Word::With:
        if (before == Word::End)
          withs_.close();
        else
          withPending_ = true;
        break;
      case Word::Sub:
      case Word::Function:
      case Word::Property:  // what stands behind End Sub on its line is not in it
        if (before == Word::End && at_ + 1 >= scope_.procedureEnd()) leaveProcedure();
        break;
      default:
        break;
    }
    if (open_.empty()) statement_.target = Target::None;
  }

  void me() {
    beginOperand();
    if (!tables_.module(index_).standard)
      statement_.value = {.kind = Value::Kind::Instance, .index = index_};
  }

  void directive() {
    if (character(at_) == u8'#') {
      switch (module_.tokens[scope_.nextToken(at_)].word) {
        case Word::If:
          withs_.beginBranches();
          break;
        case Word::ElseIf:
        case Word::Else:
          withs_.nextBranch();
          break;
        case Word::End:
        case Word::EndIf:
          withs_.endBranches();
          break;
        default:
          break;
      }
    }
    while (kind() != TokenKind::LineEnd && kind() != TokenKind::End) ++at_;
  }

  // ------------------------------------------------------------------------ expressions

  void beginOperand() {
    if (open_.empty()) {
      statement_.target = statement_.target == Target::Awaited ? Target::Open : Target::None;
      statement_.targetReference = kNone;
    }
    statement_.behindOperand = true;
  }

  // "(" behind an operand: its arguments or indices, else only a part of an expression. Behind a
  // blank at the start of a statement it is the first argument of a call.
  void openParenthesis() {
    const bool firstArgument =
        module_.tokens[at_].gap > 0 && open_.empty() && statement_.target == Target::Open;
    const Value called =
        statement_.behindOperand && !firstArgument ? call(statement_.value) : Value{};
    if (!statement_.behindOperand && open_.empty()) statement_.target = Target::None;
    open_.push_back(called);
    ++at_;
    statement_.value = {};
    statement_.behindOperand = false;
  }

  // What a value is with "(...)" behind it.
  Value call(Value value) const {
    if (value.takesArguments || scope_.isMark(scope_.nextToken(at_), u8')')) {
      value.takesArguments = false;
      return value;
    }
    // Objects whose default member gives objects again: nobody nests them deeply.
    for (int depth = 0; depth < 4; ++depth) {
      if (value.isArray || value.takesArguments) {
        (value.takesArguments ? value.takesArguments : value.isArray) = false;
        return value;
      }
      if (value.kind != Value::Kind::Instance) return {};
      const std::uint32_t member = tables_.module(value.index).defaultMember;
      if (member == kNone) return {};
      value = valueOf(member);
    }
    return {};
  }

  // "." or "!": of the operand in front of it, or of the With block when nothing or a blank is
  // there.
  void member() {
    const bool bang = character(at_) == u8'!';
    if (!statement_.behindOperand || !isGlued(at_)) {
      beginOperand();
      statement_.value = withs_.value();
    }
    const Value owner = std::exchange(statement_.value, {});
    at_ = scope_.nextToken(at_);
    if (open_.empty()) statement_.targetReference = kNone;
    if (!isNameKind(kind())) return;
    use(memberOf(owner, bang), owner.kind != Value::Kind::Instance);
    ++at_;
  }

  // Whether no blank is in front of a token; a continuation is none.
  bool isGlued(std::uint32_t token) const {
    const TokenKind before = token > 0 ? module_.tokens[token - 1].kind : TokenKind::LineEnd;
    return before == TokenKind::Continuation ||
           (module_.tokens[token].gap == 0 && before != TokenKind::Blank);
  }

  Meaning memberOf(const Value& owner, bool bang) {
    if (owner.kind == Value::Kind::Unknown || owner.isArray) return {};
    const std::uint32_t name = scope_.at(at_).inProject;
    switch (owner.kind) {
      case Value::Kind::Record:
      case Value::Kind::Enum:
        return tables_.part(owner.index, name);
      case Value::Kind::Project:
        return tables_.inProject(name);
      default:
        break;
    }
    const Meaning found = tables_.inModule(owner.index, name);
    if (owner.kind == Value::Kind::Module || found.kind != Meaning::Kind::Member) return found;
    const DeclarationKind kind = tables_.member(found.index).kind;
    const bool ofEnum = kind == DeclarationKind::Enum || kind == DeclarationKind::EnumMember;
    return ofEnum || (bang && kind != DeclarationKind::Control) ? Meaning{} : found;
  }

  // ------------------------------------------------------------------------------ names

  void name() {
    if (atDeclaration()) return declaredName();
    if (statement_.firstWord == Word::DefType || isReservedFunction(word())) {
      ++at_;
      return otherOperand();
    }
    if (statement_.typeExpected) return typeName();
    if (std::exchange(statement_.eventExpected, false)) {
      use(tables_.event(index_, scope_.at(at_).inProject), true);
      statement_.value = {};
      statement_.behindOperand = true;
    } else {
      bareName();
    }
    ++at_;
  }

  void bareName() {
    const bool starts = statement_.target == Target::Awaited && open_.empty();
    beginOperand();
    statement_.value = {};
    const std::uint32_t number = scope_.numberOf(at_);
    Scope::Name& name = scope_[number];
    if (const std::uint32_t declaration = scope_.local(name); declaration != kNone)
      local(declaration, name);
    else if (scope_.isResult(number) && isResult(starts))
      statement_.value = declaredValue(scope_.procedure());
    else if (const Meaning bare = scope_.bare(name); isStandardModule(bare) && !isQualifier())
      use(tables_.behindModules(index_, name.inProject), true);
    else
      use(bare, true);
  }

  bool isStandardModule(Meaning meaning) const {
    return meaning.kind == Meaning::Kind::Module && tables_.module(meaning.index).standard;
  }

  // Whether the "." behind the name belongs to it.
  bool isQualifier() const {
    const std::uint32_t next = scope_.nextToken(at_);
    return scope_.isMark(next, u8'.') && isGlued(next);
  }

  void local(std::uint32_t declaration, Scope::Name& name) {
    if (module_.declarations[declaration].byReDim) {
      const Meaning& variable = scope_.bare(name);
      if (variable.kind == Meaning::Kind::Member &&
          tables_.member(variable.index).kind == DeclarationKind::Variable)
        return use(variable, true);
    }
    if (!atDeclaration()) references_.push_back({at_, index_, declaration});
    statement_.value = declaredValue(declaration);
  }

  Value declaredValue(std::uint32_t declaration) const {
    return valueOf(scope_.typeOf(declaration), module_.declarations[declaration].isArray, false);
  }

  // In a Function or Property Get its own name is the result, but with arguments, or where a
  // statement begins with it and does not assign, a call.
  bool isResult(bool startsStatement) const {
    const std::uint32_t next = scope_.nextToken(at_);
    if (scope_.isMark(next, u8'(')) return !scope_.resultTakesArguments();
    return !startsStatement || scope_.isMark(next, u8'=') || scope_.isMark(next, u8'.') ||
           scope_.isMark(next, u8'!');
  }

  // Notes what the name at at_ means, and what value it has. `own`: if it is of this module, it
  // may be private.
  void use(Meaning meaning, bool own) {
    if (meaning.kind == Meaning::Kind::Project) statement_.value = {.kind = Value::Kind::Project};
    if (meaning.kind == Meaning::Kind::Module) {
      const bool standard = tables_.module(meaning.index).standard;
      statement_.value = {.kind = standard ? Value::Kind::Module : Value::Kind::Instance,
                          .index = meaning.index};
      note(at_, meaning);
    }
    if (meaning.kind != Meaning::Kind::Member) return;
    meaning.index = tables_.accessor(meaning.index, Accessor::Get, own ? index_ : kNone);
    if (meaning.index == kNone) return;
    if (open_.empty() && statement_.target == Target::Open) {
      statement_.targetReference = static_cast<std::uint32_t>(references_.size());
      statement_.targetMember = meaning.index;
      statement_.targetOwn = own;
    }
    note(at_, meaning);
    statement_.value = valueOf(meaning.index);
  }

  void note(std::uint32_t token, Meaning meaning) {
    if (meaning.kind == Meaning::Kind::Module) {
      references_.push_back({token, meaning.index, kNone});
    } else if (meaning.kind == Meaning::Kind::Member) {
      const Member& member = tables_.member(meaning.index);
      references_.push_back({token, member.module, member.declaration});
    }
  }

  // "=" behind the statement's first expression.
  void assign() {
    if (statement_.targetReference == kNone ||
        endOf(module_.tokens, at_) != module_.tokens[at_].begin + 1)
      return;
    const std::uint32_t index = tables_.accessor(statement_.targetMember, statement_.assigned,
                                                 statement_.targetOwn ? index_ : kNone);
    if (index != kNone)
      references_[statement_.targetReference].declaration = tables_.member(index).declaration;
  }

  Value valueOf(std::uint32_t index) const {
    const Member& member = tables_.member(index);
    switch (member.kind) {
      case DeclarationKind::Enum:
        return {.kind = Value::Kind::Enum, .index = index};
      case DeclarationKind::Sub:
      case DeclarationKind::Event:
      case DeclarationKind::EnumMember:
        return {};
      default:
        return valueOf(member.type, member.isArray, member.takesArguments);
    }
  }

  static Value valueOf(TypeReference type, bool isArray, bool takesArguments) {
    switch (type.kind) {
      case TypeReference::Kind::Instance:
        return {Value::Kind::Instance, isArray, takesArguments, type.index};
      case TypeReference::Kind::Record:
        return {Value::Kind::Record, isArray, takesArguments, type.index};
      default:
        return {};
    }
  }

  void typeName() {
    const bool isNew = statement_.isNew;
    otherOperand();
    const Meaning found = scope_.typePath(
        at_, [this](std::uint32_t token, Meaning meaning) { note(token, meaning); });
    if (isNameKind(kind())) ++at_;
    if (isNew) statement_.value = valueOf(tables_.typeReference(found), false, false);
  }

  // Behind a label a statement begins. A jump leads to one in the same procedure.
  void label() {
    const std::uint32_t token = at_++;
    if (token == nextName_) {
      toNextDeclaration();
      startStatement();
    } else if (const std::uint32_t label = scope_.label(scope_.at(token)); label != kNone) {
      references_.push_back({token, index_, label});
    }
  }

  bool atDeclaration() const { return at_ == nextName_; }
  void toNextDeclaration() {
    ++next_;
    nextName_ = next_ < module_.declarations.size() ? module_.declarations[next_].name : kNone;
  }

  void declaredName() {
    const Declaration& declared = module_.declarations[next_];
    if (isProcedure(declared.kind) && !declared.body.empty()) scope_.enter(next_);
    otherOperand();
    if (declared.byReDim) local(next_, scope_.at(at_));
    toNextDeclaration();
    ++at_;
  }

  const Module& module_;
  const std::uint32_t index_;
  const ProjectTables& tables_;
  Scope scope_;
  WithBlocks<Value> withs_;
  std::vector<Reference> references_;
  std::uint32_t at_ = 0;            // the token
  std::uint32_t next_ = kNone;      // the declaration that follows
  std::uint32_t nextName_ = kNone;  // the token that names it

  // Of the statement:
  Statement statement_;
  std::vector<Value> open_;   // by "(": what it is with what stands in front of it
  bool withPending_ = false;  // it opens a With block
};

}  // namespace

std::vector<Reference> resolveNames(const Module& module, std::uint32_t index,
                                    const ProjectTables& tables) {
  return Resolver(module, index, tables).run();
}

}  // namespace tintline::vb
