// A free-standing triangle for drawing: three points of its own and a status.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class TPoint;

class ORVIKDTM_API Triangle3 {
 public:
  // Copies a, b and c, none of them null: later changes to them do not reach this triangle.
  Triangle3(const TPoint* a, const TPoint* b, const TPoint* c, int status);
  ~Triangle3();
  Triangle3(const Triangle3&) = delete;
  Triangle3& operator=(const Triangle3&) = delete;

  // The corners, owned by this triangle.
  TPoint* getP1() const { return P1_; }
  TPoint* getP2() const { return P2_; }
  TPoint* getP3() const { return P3_; }

  // Store the pointer given, which becomes this triangle's (made with `new`); the corner that it replaces is not
  // released and is the caller's from then on.
  void setP1(TPoint* p) { P1_ = p; }
  void setP2(TPoint* p) { P2_ = p; }
  void setP3(TPoint* p) { P3_ = p; }

  // In a drawing list: 1 cut, -1 fill, 0 not yet measured.
  int getStatus() const { return status_; }
  void setStatus(int status) { status_ = status; }

 private:
  TPoint* P1_;
  TPoint* P2_;
  TPoint* P3_;
  int status_;
};

}  // namespace OrvikDTM
