#pragma once

// The value of the host boundary.

#include "xllrt/value/record_pair.h"

#include <string>
#include <string_view>

namespace metrify {

class CXlCellView;

/// A worksheet value: a record of each family, and a state that says which of them hold the value and who
/// owns the memory behind them. Values built here stand in the family of the host, so that no caller has to
/// know it.
///
/// Whatever takes a value or a text takes also one that lies inside the object that is set, a cell of the
/// same array for instance.
class CXlOper {
  public:
    // Bits of the state.
    static constexpr std::uint16_t kOwned4 = RecordFamily<XLOPER>::kOwned;
    static constexpr std::uint16_t kHostOwned4 = RecordFamily<XLOPER>::kHostOwned;
    static constexpr std::uint16_t kValid4 = RecordFamily<XLOPER>::kValid;
    static constexpr std::uint16_t kOwned12 = RecordFamily<XLOPER12>::kOwned;
    static constexpr std::uint16_t kHostOwned12 = RecordFamily<XLOPER12>::kHostOwned;
    static constexpr std::uint16_t kValid12 = RecordFamily<XLOPER12>::kValid;

    /// No value.
    CXlOper();
    explicit CXlOper(bool value);
    explicit CXlOper(double value);
    /// A pointer is no boolean.
    CXlOper(const void*) = delete;
    CXlOper(const CXlOper& source);
    CXlOper& operator=(const CXlOper& source);
    ~CXlOper();

    /// The value of a record that somebody else owns; what the record points at is not copied. No value for a
    /// null pointer.
    static CXlOper Wrap12(const XLOPER12* record);
    static CXlOper Wrap4(const XLOPER* record);

    // Setters. With `freeFirst` the old content is released, otherwise it is overwritten.

    void SetBool(std::uint8_t value, bool freeFirst = true);
    void SetNumber(double value, bool freeFirst = true);
    /// The narrow family keeps the low 16 bits.
    void SetInt(std::int32_t value, bool freeFirst = true);
    void SetError(int code, bool freeFirst = true);
    void SetMissing(bool freeFirst = true);
    /// Stores a copy of the text. The narrow family cuts it at 255; the count of the wide family wraps at
    /// 65536. A null pointer is the empty text.
    void SetText(std::string_view text, bool freeFirst = true);
    void SetText(std::u16string_view text, bool freeFirst = true);
    void SetText(const char* text, bool freeFirst = true);
    void SetText(const XCHAR* text, bool freeFirst = true);

    /// Makes it an array of empty cells, or of copies of `fill`. False, with no value left, if the host's
    /// family has no room for the size. Throws as `Fill` does.
    bool MakeArray(std::int32_t rows, std::int32_t columns, const CXlOper* fill = nullptr);

    /// Puts a copy of the source, a scalar, into every cell of the array. Nothing happens for a null pointer.
    void Fill(const CXlOper* source);

    /// Releases what it holds, to the host what the host owns, and leaves no value.
    void Free();

    /// Copies each valid side of the source, with all that it points at, in place of what that side held. A
    /// side that cannot be copied stays as it was.
    void CopyFrom(const CXlOper& source);

    /// One cell of an array. What is set there belongs to the array, which releases it. A number, text,
    /// boolean or integer is its own cell at (0, 0): the view is this value itself, so that what is set
    /// through it is set here, in place of the whole value, and belongs to it.
    CXlCellView Cell(std::int32_t row, std::int32_t column);
    const CXlCellView Cell(std::int32_t row, std::int32_t column) const;
    /// One cell of an array with one row or one column.
    CXlCellView VectorCell(std::int32_t index);
    const CXlCellView VectorCell(std::int32_t index) const;

    /// Rows and columns; a scalar has one of each, anything else none.
    XlSize Dimensions() const;
    /// Rows and columns, also of a reference, for which its first rectangle counts. With `noScalars`, a
    /// scalar has none.
    XlSize RefDimensions(bool noScalars) const;

    bool IsType(std::uint16_t type) const { return Type() == type; }
    bool IsError() const { return IsType(xltypeErr); }
    bool IsNil() const { return IsType(xltypeNil); }
    bool IsString() const { return IsType(xltypeStr); }
    bool IsRef() const { return IsType(xltypeRef); }
    bool IsSRef() const { return IsType(xltypeSRef); }
    bool IsRefOrSRef() const { return IsRef() || IsSRef(); }
    /// True for a scalar, and for an array with one row or one column.
    bool IsVector() const;

    // Reading. With `strict`, a value that cannot be read throws a `CXlConversionException`; otherwise it
    // reads as 0, false or the empty text.

    double ToNumber(bool strict = false) const;
    bool ToBool(bool strict = false) const;
    /// With `strict`, only a text is read. An error never reads as its text.
    std::string ToText(bool strict = false) const;
    std::u16string ToWideText(bool strict = false) const;

    /// The record to hand to the host, in this thread's keeping until `AutoFree12` or the next return. What
    /// the value owns moves there, and `#VALUE!` is left in its place: the host may release it at any time,
    /// so a second return of the value, or a look at it, no longer finds it. Any other value can be returned
    /// again.
    /// `#VALUE!` for no value, and for one that cannot be had in this family.
    XLOPER12* ReturnValue12();
    XLOPER* ReturnValue4();

    // For the gate.

    std::uint16_t State() const { return records_.State(); }
    /// The record of one family; null if the view of a cell has none.
    template <class Record>
    const Record* RecordIn() const {
        return records_.Get<Record>();
    }
    XLOPER* Record4() { return records_.Get<XLOPER>(); }
    const XLOPER* Record4() const { return records_.Get<XLOPER>(); }
    XLOPER12* Record12() { return records_.Get<XLOPER12>(); }
    const XLOPER12* Record12() const { return records_.Get<XLOPER12>(); }

    /// Takes over a record that the host filled: what was there is released, and this goes back to the host.
    /// The cell of an array gets a copy, and the record goes back at once.
    void TakeFromHost(XLOPER record);
    void TakeFromHost(XLOPER12 record);

  private:
    friend class CXlCellView;

    explicit CXlOper(const XLOPER* record);
    explicit CXlOper(const XLOPER12* record);
    // For a view of a cell, which is a part of an array and is released with it.
    struct CellTag {};
    template <class Record>
    CXlOper(CellTag /*tag*/, Record* cell) : records_(cell) {}

    bool BuildsWide() const;
    std::uint16_t Type() const;

    template <class Setter>
    void SetPlain(bool freeFirst, Setter setter);
    template <class Text>
    void SetAnyText(Text text, bool freeFirst);
    template <class Record>
    void TakeRecord(const Record& record);
    template <class Record>
    bool MakeArrayOf(const XlSize& size);
    template <class Record>
    void FillArray(const CXlOper& source);
    template <class Record>
    CXlCellView ViewCell(std::int32_t row, std::int32_t column);
    template <class Record>
    Record* ReturnRecord(Record& kept);
    template <class Text>
    Text ToAnyText(bool strict) const;

    CXlRecordPair records_;
};

} // namespace metrify
