// A triangle of a TIN, given by the numbers of its three edges in the same TIN. The edges close; their order is that in
// which the construction named them and says nothing about orientation.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/tin/Edits.h>

inline namespace OrvikDTM {

class ORVIKDTM_API Triangle {
 public:
  // Copies three edge numbers; the array must not be null.
  explicit Triangle(const int* three) : Eno_{three[0], three[1], three[2]} {}

  Triangle(const Triangle&) = default;
  Triangle& operator=(const Triangle& other) noexcept {
    setEno(other.Eno_);
    return *this;
  }

  // The triangle's own array of three edge numbers. Through the first, which may be written to for as long as the
  // triangle lives, every query has to look whether it has been: read a const Triangle.
  int* getEno() {
    detail::Edits::noteHandedOut(this);
    return Eno_;
  }
  const int* getEno() const { return Eno_; }
  void setEno(const int* three) {
    detail::Edits::noteInBlock(this);
    Eno_[0] = three[0];
    Eno_[1] = three[1];
    Eno_[2] = three[2];
  }

  // Elements of a published list may lie in a block of many; deleting one is right wherever it came from.
  static void operator delete(void* triangle) noexcept;

 private:
  int Eno_[3];
};

}  // namespace OrvikDTM
