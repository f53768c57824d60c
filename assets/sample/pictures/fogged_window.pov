// Double-glazed window from inside: one sash is clear, the seal of the other
// has failed and its pane is milky.
#version 3.7;
#declare BouncedLight = 1;
#include "snapshot.inc"
#include "materials.inc"
#include "plants.inc"

#declare Chance = seed(111);

CloudySky()
SoftSun(<60, 60, 30>, rgb <0.9, 0.85, 0.75>)
SoftLamp(<-0.8, 2.4, -1.8>, rgb <1.5, 1.42, 1.3>, 0.8, 2)

Snapshot(<-0.35, 1.50, -1.65>, <0.0, 1.42, 0>, 58, -2)

// ---- room
difference {
  box { <-4, -0.5, 0>, <4, 3.5, 0.16> }
  box { <-0.72, 0.92, -1>, <0.72, 2.0, 1> }
  PaintTexture(<0.62, 0.64, 0.56>, 0.03)
}
#declare White = texture { pigment { rgb <0.78, 0.78, 0.76> } finish { diffuse 0.8 specular 0.25 roughness 0.04 } }
// casing, sill and apron
difference {
  box { <-0.80, 0.90, -0.02>, <0.80, 2.08, 0> }
  box { <-0.71, 0.80, -1>, <0.71, 1.99, 1> }
  texture { White }
}
object { Round_Box_Union(<-0.86, 0.885, -0.11>, <0.86, 0.92, 0.08>, 0.01) texture { White } }
box { <-0.79, 0.80, -0.018>, <0.79, 0.885, 0> texture { White } }

// One sash with its latch; the pane is added by the caller.
#macro Sash(Left, Right, Away)
  difference {
    box { <Left, 0.925, 0.06 + Away>, <Right, 1.985, 0.10 + Away> }
    box { <Left + 0.06, 0.99, -1>, <Right - 0.06, 1.925, 1> }
    texture { White }
  }
  difference {   // rubber seal
    box { <Left + 0.055, 0.985, 0.066 + Away>, <Right - 0.055, 1.93, 0.094 + Away> }
    box { <Left + 0.067, 0.997, -1>, <Right - 0.067, 1.918, 1> }
    texture { BlackPlasticTexture }
  }
#end
Sash(-0.71, 0.005, 0.0)
Sash(-0.005, 0.71, 0.0)
union {   // handle
  object { Round_Box_Union(<-0.022, 1.38, 0.045>, <0.022, 1.48, 0.06>, 0.006) }
  object { Round_Box_Union(<-0.012, 1.28, 0.022>, <0.012, 1.45, 0.04>, 0.006) }
  cylinder { <0, 1.44, 0.03>, <0, 1.44, 0.06>, 0.01 }
  translate x * -0.03 texture { ChromeTexture }
}

#declare ClearPane = texture {
  pigment { rgbf <0.97, 0.99, 0.98, 0.97> }
  finish { diffuse 0.02 reflection { 0.0, 0.06 } }
}
box { <-0.65, 0.98, 0.079>, <-0.055, 1.93, 0.081> texture { ClearPane } no_shadow }
box { <0.055, 0.98, 0.079>, <0.65, 1.93, 0.081> texture { ClearPane } no_shadow }

// Mist between the panes: clearer towards the upper rim, dense in the middle.
#macro Mist(Depth, Thin)
  box { <0.06, 0.985, Depth>, <0.65, 1.925, Depth + 0.0002>
    pigment {
      spherical turbulence 0.25 octaves 5
      color_map {
        [0.00 rgbt <0.86, 0.88, 0.90, 0.92>]
        [0.15 rgbt <0.86, 0.88, 0.90, 0.50 + Thin>]
        [0.45 rgbt <0.88, 0.90, 0.92, 0.18 + Thin>]
        [1.00 rgbt <0.90, 0.92, 0.93, 0.06 + Thin>]
      }
      scale <0.42, 0.66, 1> translate <0.36, 1.34, Depth>
    }
    finish { diffuse 0.5 emission 0.28 } no_shadow
  }
#end
Mist(0.084, 0.22)
Mist(0.087, 0.34)
// droplets that gathered, with the tracks some of them left
#for (Bead, 0, 900)
  #local Low = pow(rand(Chance), 1.7);
  sphere { 0, 0.0012 + rand(Chance) * 0.0028 scale <1, 1.25, 0.5>
    translate <0.07 + rand(Chance) * 0.57, 1.0 + Low * 0.85, 0.0775>
    pigment { rgbf <0.95, 0.97, 0.98, 0.75> } finish { diffuse 0.3 specular 0.9 roughness 0.01 } no_shadow }
#end
#for (Track, 0, 9)
  #local X = 0.09 + rand(Chance) * 0.52;
  #local From = 1.25 + rand(Chance) * 0.5;
  cylinder { <X, 0.99, 0.078>, <X + Jitter(Chance, 0.01), From, 0.078>, 0.0022
    pigment { rgbt <0.20, 0.27, 0.20, 0.62> } no_shadow }
#end

// ---- outside
plane { y, -0.4 texture { LawnTexture scale 3 } }
object { Tree(6, <0.14, 0.24, 0.06>, Chance) translate <-1.6, -0.4, 9> }
object { Tree(7, <0.12, 0.22, 0.05>, Chance) translate <3.2, -0.4, 11> }
object { Tree(9, <0.13, 0.20, 0.05>, Chance) translate <-7, -0.4, 18> }
object { Shrub(<1.0, 0.6, 0.7>, <0.13, 0.24, 0.06>, Chance) translate <0.6, 0.1, 5> }
#for (Picket, -40, 40)
  box { <Picket * 0.2, -0.4, 7>, <Picket * 0.2 + 0.14, 0.95, 7.03> pigment { rgb <0.55, 0.40, 0.27> * (0.8 + rand(Chance) * 0.3) } }
#end

// ---- on the sill and beside the window
union {
  cone { 0, 0.055, y * 0.11, 0.075 texture { pigment { rgb <0.50, 0.22, 0.12> } normal { bumps 0.1 scale 0.01 } } }
  cylinder { y * 0.095, y * 0.115, 0.082 pigment { rgb <0.50, 0.22, 0.12> } }
  object { LeafCloud(<0.13, 0.12, 0.11>, 260, 0.055, Chance) translate y * 0.22 LeafTexture(<0.14, 0.28, 0.08>) }
  translate <-0.50, 0.92, -0.02>
}
// curtains as folded cloth
#macro Curtain(Left, Right)
  #local Folds = 60;
  mesh {
    #for (I, 0, Folds - 1)
      #local XA = Left + (Right - Left) * I / Folds;
      #local XB = Left + (Right - Left) * (I + 1) / Folds;
      #local ZA = -0.10 + 0.030 * sin(I * 0.95) + 0.012 * sin(I * 0.37);
      #local ZB = -0.10 + 0.030 * sin((I + 1) * 0.95) + 0.012 * sin((I + 1) * 0.37);
      triangle { <XA, -0.2, ZA>, <XB, -0.2, ZB>, <XA, 2.2, ZA> }
      triangle { <XB, -0.2, ZB>, <XA, 2.2, ZA>, <XB, 2.2, ZB> }
    #end
    texture { pigment { rgb <0.60, 0.52, 0.40> } normal { bumps 0.1 scale 0.004 } finish { diffuse 0.8 } }
  }
#end
Curtain(-1.30, -0.84)
Curtain(0.86, 1.30)
cylinder { <-1.5, 2.21, -0.10>, <1.5, 2.21, -0.10>, 0.012 texture { BrassTexture } }
