// What this program uses of Core Graphics, as its reference documents it.
#pragma once

extern "C" {

typedef double CGFloat;
typedef struct CGPoint {
  CGFloat x;
  CGFloat y;
} CGPoint;
typedef struct CGSize {
  CGFloat width;
  CGFloat height;
} CGSize;
typedef struct CGRect {
  CGPoint origin;
  CGSize size;
} CGRect;

typedef struct CGContext* CGContextRef;

void CGContextScaleCTM(CGContextRef _Nullable c, CGFloat sx, CGFloat sy);
}
