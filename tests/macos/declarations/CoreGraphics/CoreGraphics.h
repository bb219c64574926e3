// Declarations of the parts of Core Graphics that the program uses, written from Apple's reference.
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
