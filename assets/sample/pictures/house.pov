// Cover picture: the house from the street.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"
#include "plants.inc"

#declare Chance = seed(100);

CloudySky()
SoftSun(<-45, 55, -60>, rgb <1.3, 1.22, 1.06>)
light_source { <40, 30, -40> rgb <0.38, 0.42, 0.52> shadowless }

Snapshot(<-1.6, 1.75, -16.5>, <0.6, 2.45, 0>, 52, 0.6)

#declare Siding = <0.58, 0.62, 0.62>;
#declare Trim = texture { pigment { rgb <0.80, 0.80, 0.78> } finish { diffuse 0.8 } }
#declare GlassPane = texture { pigment { rgb <0.05, 0.065, 0.08> } finish { diffuse 0.4 specular 0.8 roughness 0.005 reflection 0.3 } }

// Lapped boards over a rectangle of the front, facing the street at Depth.
#macro LappedFront(Left, Right, Bottom, Top, Depth)
  #local Laps = ceil((Top - Bottom) / 0.16);
  #for (Lap, 0, Laps - 1)
    box { <Left, 0, 0>, <Right, 0.19, 0.02> rotate x * 5 translate <0, Bottom + Lap * 0.16, Depth - 0.02> }
  #end
  box { <Left, Bottom, Depth>, <Right, Top, Depth + 0.1> }
#end

// Window with a cross of glazing bars and shutters.
#macro FrontWindow(Centre, Half, Height, Depth, ShutterTone)
  box { <Centre - Half, 0, Depth - 0.05>, <Centre + Half, Height, Depth> texture { GlassPane } }
  difference {
    box { <Centre - Half - 0.09, -0.09, Depth - 0.09>, <Centre + Half + 0.09, Height + 0.09, Depth> }
    box { <Centre - Half, 0, Depth - 1>, <Centre + Half, Height, Depth + 1> }
    texture { Trim }
  }
  box { <Centre - 0.025, 0, Depth - 0.07>, <Centre + 0.025, Height, Depth> texture { Trim } }
  box { <Centre - Half, Height / 2 - 0.025, Depth - 0.07>, <Centre + Half, Height / 2 + 0.025, Depth> texture { Trim } }
  box { <Centre - Half - 0.14, -0.16, Depth - 0.14>, <Centre + Half + 0.14, -0.09, Depth> texture { Trim } }
  #for (Side, -1, 1, 2)
    #for (Slat, 0, 15)
      box { <-0.17, 0, -0.012>, <0.17, Height / 16 * 0.85, 0.012> rotate x * -14
        translate <Centre + Side * (Half + 0.29), Slat * Height / 16, Depth - 0.06> pigment { rgb ShutterTone } }
    #end
  #end
#end

// Gable roof slope covered in shingle rows; x runs along the eave.
#macro ShingledSlope(Left, Right, Length, Tone)
  #local Rows = ceil(Length / 0.17);
  #for (Row, 0, Rows - 1)
    #local X = Left - rand(Chance) * 0.4;
    #while (X < Right)
      #local Wide = 0.4 + rand(Chance) * 0.35;
      box { <max(X, Left), 0, 0>, <min(X + Wide, Right), 0.02, 0.2> rotate x * 4 translate z * Row * 0.17
        ShingleTexture(Tone * (0.75 + rand(Chance) * 0.5), <Row, X, rand(Chance)> * 3) }
      #local X = X + Wide;
    #end
  #end
  box { <Left, -0.12, 0.02>, <Right, 0, Length> texture { Trim } }
#end

#declare ShutterTone = <0.07, 0.12, 0.20>;
#declare RoofTone = <0.17, 0.15, 0.145>;

// ---- main body, eave to the street
union { LappedFront(-6.2, 2.2, 0.55, 3.2, 0) PaintTexture(Siding, 0.03) }
box { <-6.2, 0, 0.0>, <2.2, 0.55, 0.3> BrickTexture(<0.34, 0.15, 0.10>, 0) }
union {
  ShingledSlope(-6.6, 2.6, 4.4, RoofTone)
  rotate -x * 30 translate <0, 3.12, -0.45>
}
box { <-6.6, 2.98, -0.5>, <2.6, 3.14, -0.42> texture { Trim } }
// corner boards
box { <-6.28, 0.5, -0.05>, <-6.1, 3.1, 0.1> texture { Trim } }
// chimney
#for (Row, 0, 24)
  #for (Brick, 0, 3)
    box { <Brick * 0.23, 0, 0>, <Brick * 0.23 + 0.215, 0.075, 0.5> translate <-4.4 + 0.1 * mod(Row, 2), 4.2 + Row * 0.088, 2.3>
      BrickTexture(<0.36, 0.15, 0.10> * (0.8 + rand(Chance) * 0.4), <Row, Brick, 0>) }
  #end
#end
box { <-4.42, 4.0, 2.32>, <-3.4, 6.35, 2.75> texture { MortarTexture } }
box { <-4.5, 6.35, 2.2>, <-3.3, 6.45, 2.9> texture { ConcreteTexture(<0.45, 0.44, 0.42>) } }

// ---- garage wing on the right with a front gable
#declare WingLeft = 2.2;
#declare WingRight = 7.4;
#declare WingFront = -1.6;
#declare WingMiddle = (WingLeft + WingRight) / 2;
#declare GableHeight = 1.75;
union { LappedFront(WingLeft, WingRight, 0.2, 3.1, WingFront) PaintTexture(Siding, 0.03) }
intersection {
  union { LappedFront(WingLeft, WingRight, 3.05, 3.05 + GableHeight + 0.1, WingFront) }
  prism { linear_spline -3, 3, 4 <WingLeft - 0.3, 3.0>, <WingRight + 0.3, 3.0>, <WingMiddle, 3.05 + GableHeight>, <WingLeft - 0.3, 3.0>
    rotate -x * 90 scale <1, 1, -1> }
  PaintTexture(Siding, 0.03)
}
box { <WingLeft, 0, WingFront>, <WingLeft + 0.1, 3.1, 0.2> PaintTexture(Siding * 0.95, 0.03) }
#declare WingAngle = degrees(atan2(GableHeight, (WingRight - WingLeft) / 2 + 0.1));
#declare WingSlope = sqrt(pow(GableHeight, 2) + pow((WingRight - WingLeft) / 2 + 0.1, 2)) + 0.42;
#for (Side, -1, 1, 2)
  union {
    union { ShingledSlope(-2.4, 3.6, WingSlope, RoofTone) rotate y * -90 }   // rows now climb towards -x
    // barge board at the street end
    box { <-WingSlope, -0.2, -2.45>, <0, 0.02, -2.38> texture { Trim } }
    translate x * 0
    rotate -z * WingAngle translate x * WingSlope * cos(radians(WingAngle)) - y * WingSlope * sin(radians(WingAngle))
    scale <Side, 1, 1>
    translate <WingMiddle, 3.05 + GableHeight + 0.12, 0.2>
  }
#end
// round louvre in the gable
cylinder { <WingMiddle, 3.85, WingFront - 0.08>, <WingMiddle, 3.85, WingFront>, 0.32 texture { Trim } }
cylinder { <WingMiddle, 3.85, WingFront - 0.09>, <WingMiddle, 3.85, WingFront>, 0.25 pigment { rgb 0.12 } }
#for (Slat, -3, 3) box { <WingMiddle - 0.24, 3.84 + Slat * 0.065, WingFront - 0.1>, <WingMiddle + 0.24, 3.865 + Slat * 0.065, WingFront> texture { Trim } } #end

// garage door
union {
  #for (Section, 0, 3)
    box { <-1.9, Section * 0.56, 0>, <1.9, Section * 0.56 + 0.55, 0.05> }
    #for (Panel, 0, 5)
      #if (Section < 3) object { Round_Box_Union(<-1.84 + Panel * 0.63, Section * 0.56 + 0.08, -0.02>, <-1.31 + Panel * 0.63, Section * 0.56 + 0.47, 0.02>, 0.015) } #end
    #end
  #end
  texture { Trim } translate <WingMiddle, 0.05, WingFront - 0.06>
}
#for (Pane, 0, 5) box { <-1.82 + Pane * 0.63, 1.80, -0.015>, <-1.31 + Pane * 0.63, 2.18, 0.02> texture { GlassPane } translate <WingMiddle, 0.05, WingFront - 0.06> } #end
difference {
  box { <WingMiddle - 2.05, 0, WingFront - 0.1>, <WingMiddle + 2.05, 2.45, WingFront> }
  box { <WingMiddle - 1.9, -1, WingFront - 1>, <WingMiddle + 1.9, 2.3, WingFront + 1> }
  texture { Trim }
}

// ---- windows
union { FrontWindow(-4.6, 0.62, 1.35, 0, ShutterTone) translate y * 1.2 }
union { FrontWindow(-2.15, 0.62, 1.35, 0, ShutterTone) translate y * 1.2 }

// ---- porch with door, steps and two columns
box { <-0.6, 0, -1.7>, <2.2, 0.5, 0> texture { ConcreteTexture(<0.48, 0.47, 0.44>) } }
box { <-0.2, 0, -2.05>, <1.6, 0.33, -1.7> texture { ConcreteTexture(<0.48, 0.47, 0.44>) translate 3 } }
box { <-0.2, 0, -2.4>, <1.6, 0.17, -2.0> texture { ConcreteTexture(<0.48, 0.47, 0.44>) translate 6 } }
union {
  ShingledSlope(-0.95, 2.2, 1.95, RoofTone) rotate -x * 17 translate <0, 2.86, -1.95>
}
box { <-0.95, 2.72, -1.98>, <2.2, 2.88, -1.88> texture { Trim } }
box { <-0.85, 2.70, -1.9>, <2.2, 2.74, 0> texture { Trim } }
#for (Column, 0, 1)
  union {
    cylinder { y * 0.5, y * 2.72, 0.09 }
    box { <-0.13, 0.5, -0.13>, <0.13, 0.62, 0.13> }
    box { <-0.13, 2.6, -0.13>, <0.13, 2.72, 0.13> }
    translate <-0.55 + Column * 2.55, 0, -1.6> texture { Trim }
  }
#end
box { <0.1, 0.5, -0.06>, <1.2, 2.65, 0> texture { Trim } }
object { Round_Box_Union(<0.2, 0.52, -0.09>, <1.1, 2.55, 0>, 0.01) pigment { rgb <0.42, 0.06, 0.045> } finish { specular 0.3 } }
#for (Panel, 0, 3)
  object { Round_Box_Union(<0.29 + mod(Panel, 2) * 0.38, 0.68 + floor(Panel / 2) * 0.85, -0.105>, <0.63 + mod(Panel, 2) * 0.38, 1.40 + floor(Panel / 2) * 0.60, 0>, 0.012) pigment { rgb <0.46, 0.07, 0.05> } finish { specular 0.3 } }
#end
sphere { <1.02, 1.48, -0.13>, 0.035 texture { BrassTexture } }

// ---- grounds
plane { y, -0.02 texture { LawnTexture scale 3 } }
object { Lawn(<-11, 0, -13>, <11, 0, -0.2>, 0.5, 0.06, Chance) }
box { <WingMiddle - 2.1, -0.1, -30>, <WingMiddle + 2.1, 0.09, WingFront> texture { ConcreteTexture(<0.52, 0.51, 0.48>) } }
#for (Joint, 0, 7) box { <WingMiddle - 2.1, 0.089, -3.5 - Joint * 1.8>, <WingMiddle + 2.1, 0.0915, -3.48 - Joint * 1.8> pigment { rgb 0.12 } } #end
#for (Slab, 0, 8)
  box { <-0.55, -0.1, -0.5>, <0.55, 0.095, 0.5> rotate y * (Slab * -4) translate <0.7 + 0.03 * Slab * Slab * 0.9, 0, -2.95 - Slab * 1.05> texture { ConcreteTexture(<0.50, 0.48, 0.45>) translate Slab * 3 } }
#end
#for (Bush, 0, 4)
  object { Shrub(<0.62, 0.52, 0.5> * (0.8 + rand(Chance) * 0.45), <0.10, 0.20, 0.055> * (0.8 + rand(Chance) * 0.5), Chance) translate <-5.9 + Bush * 1.25, 0.4, -0.85 + Jitter(Chance, 0.15)> }
#end
object { Shrub(<0.45, 0.75, 0.45>, <0.12, 0.22, 0.06>, Chance) translate <7.8, 0.6, -1.7> }
object { Tree(7.2, <0.14, 0.23, 0.06>, Chance) translate <-8.6, 0, -2.5> }
object { Tree(11, <0.11, 0.19, 0.05>, Chance) translate <-5.5, 0, 10> }
object { Tree(12, <0.12, 0.20, 0.05>, Chance) translate <4.5, 0, 13> }
object { Tree(10, <0.13, 0.20, 0.05>, Chance) translate <11.5, 0, 8> }
// letter box by the drive
union {
  box { <-0.05, 0, -0.05>, <0.05, 1.05, 0.05> texture { LumberTexture(GreyLumber) rotate x * 90 } }
  box { <-0.11, 1.05, -0.25>, <0.11, 1.2, 0.25> pigment { rgb 0.05 } finish { specular 0.4 } }
  cylinder { <0, 1.2, -0.25>, <0, 1.2, 0.25>, 0.11 pigment { rgb 0.05 } finish { specular 0.4 } }
  translate <2.0, 0, -8.2>
}
