// Bathroom floor between tub and toilet: one tile is broken into shards, the
// crack runs on into its neighbours.
#version 3.7;
#declare BouncedLight = 1;
#include "snapshot.inc"
#include "materials.inc"

#declare Chance = seed(113);

Snapshot(<-0.18, 1.22, -1.50>, <0.01, 0.14, 0.18>, 62, 4)
SoftLamp(<-0.2, 2.3, 0.2>, rgb <1.9, 1.82, 1.68>, 0.6, 1.8)
light_source { <-1.8, 1.8, -2.2> rgb <0.35, 0.38, 0.44> }

#declare TileSize = 0.30;
#declare Grout = 0.006;
#declare TileTone = <0.60, 0.57, 0.50>;
#macro FloorTile(Tone)
  texture {
    pigment {
      granite turbulence 0.6
      color_map { [0 rgb Tone * 0.72] [0.5 rgb Tone] [1 rgb Tone * 1.15] }
      scale 0.35 translate <rand(Chance), rand(Chance), rand(Chance)> * 20
    }
    finish { diffuse 0.7 specular 0.35 roughness 0.02 reflection { 0.01, 0.10 } }
  }
#end

// ---- floor; the broken tile is left out
box { <-2, -0.05, -2>, <2, -0.004, 2> pigment { granite color_map { [0 rgb <0.22, 0.20, 0.18>] [1 rgb <0.40, 0.38, 0.34>] } scale 0.03 } }
#for (Column, -5, 4)
  #for (Row, -6, 4)
    #if (!(Column = -1 & Row = -2))
      object { Round_Box_Union(<Grout / 2, -0.01, Grout / 2>, <TileSize - Grout / 2, 0, TileSize - Grout / 2>, 0.002)
        translate <Column * TileSize, Jitter(Chance, 0.0006), Row * TileSize> FloorTile(TileTone * (0.95 + rand(Chance) * 0.1)) }
    #end
  #end
#end

// Shards of the broken tile, in tile units; one is gone, and those that tilt
// too far sink into the bed.
#declare Hub = <0.52, 0.46>;
#declare Rim = array[9] { <0.02, 0.02>, <0.42, 0.02>, <0.98, 0.02>, <0.98, 0.55>, <0.98, 0.98>, <0.60, 0.98>, <0.02, 0.98>, <0.02, 0.50>, <0.02, 0.02> }
#for (Shard, 0, 7)
  #if (Shard != 3)
    #local Centre = (Hub + Rim[Shard] + Rim[Shard + 1]) / 3;
    #local Shrink = 0.965;
    prism { linear_spline -0.008, 0, 6
      Centre + (Hub - Centre) * Shrink,
      Centre + (Hub * 0.45 + Rim[Shard] * 0.55 + <0.03 * sin(Shard * 5), 0.03 * cos(Shard * 3)> - Centre) * Shrink,
      Centre + (Rim[Shard] - Centre) * Shrink, Centre + (Rim[Shard + 1] - Centre) * Shrink,
      Centre + (Hub * 0.45 + Rim[Shard + 1] * 0.55 + <0.03 * sin((Shard + 1) * 5), 0.03 * cos((Shard + 1) * 3)> - Centre) * Shrink,
      Centre + (Hub - Centre) * Shrink
      scale <TileSize, 1, TileSize>
      rotate <Jitter(Chance, 1.2), 0, Jitter(Chance, 1.2)>
      translate <-TileSize, -0.001 + Jitter(Chance, 0.002), -2 * TileSize>
      FloorTile(TileTone)
    }
  #end
#end
// the missing piece lies beside it, with crumbs
prism { linear_spline 0, 0.008, 5
  <0, 0>, <0.12, 0.02>, <0.15, 0.10>, <0.05, 0.13>, <0, 0>
  rotate <4, 50, 3> translate <0.10, 0.003, -0.36> FloorTile(TileTone)
}
#for (Crumb, 0, 40)
  superellipsoid { <0.6, 0.6> scale <0.005, 0.003, 0.004> * (0.3 + rand(Chance)) rotate y * rand(Chance) * 360
    translate <-0.06 + Jitter(Chance, 0.14), 0.002, -0.38 + Jitter(Chance, 0.12)> pigment { rgb <0.55, 0.52, 0.46> } }
#end
// cracks into the neighbouring tiles
#macro CrackLine(Start, Heading, Length, Width)
  #local Spot = Start;
  #local Turn = Heading;
  #local Pieces = Length / 0.02;
  #for (I, 1, Pieces)
    #local Turn = Turn * 0.7 + Heading * 0.3 + Jitter(Chance, 28);
    #local Next = Spot + vrotate(<0.02, 0, 0>, y * Turn);
    cylinder { Spot, Next, Width * (1.1 - I / Pieces) }
    #local Spot = Next;
  #end
#end
union {
  CrackLine(<-0.01, 0.0005, -0.42>, -20, 0.55, 0.0026)
  CrackLine(<0.20, 0.0005, -0.34>, -75, 0.30, 0.0018)
  CrackLine(<-0.12, 0.0005, -0.31>, -105, 0.62, 0.0026)
  CrackLine(<-0.29, 0.0005, -0.45>, 190, 0.32, 0.0020)
  CrackLine(<-0.16, 0.0005, -0.60>, 100, 0.40, 0.0022)
  pigment { rgb <0.04, 0.03, 0.025> }
}

// ---- walls: small white tiles with a blue border
#declare WallTile = 0.15;
#macro TiledWall(Columns, Rows)
  #for (Column, 0, Columns - 1)
    #for (Row, 0, Rows - 1)
      box { <0.002, 0.002, -0.004>, <WallTile - 0.002, WallTile - 0.002, 0.01>
        rotate <Jitter(Chance, 0.3), Jitter(Chance, 0.3), 0>
        translate <Column, Row, 0> * WallTile
        pigment { #if (Row = 6) rgb <0.10, 0.22, 0.38> #else rgb <0.74, 0.76, 0.75> #end }
        finish { diffuse 0.72 specular 0.5 roughness 0.01 reflection { 0.02, 0.15 } } }
    #end
  #end
  box { <0, 0, 0>, <Columns * WallTile, Rows * WallTile, 0.02> pigment { rgb <0.50, 0.49, 0.46> } }
#end
union { TiledWall(24, 14) translate <-1.8, 0, 1.0> }
union { TiledWall(24, 14) rotate y * 90 translate <1.25, 0, 1.6> }

// ---- tub along the left wall
difference {
  object { Round_Box_Union(<-1.40, 0, -1.6>, <-0.62, 0.52, 0.99>, 0.03) }
  superellipsoid { <0.35, 0.3> scale <0.30, 0.42, 1.15> translate <-1.01, 0.56, -0.25> }
  texture { PorcelainTexture } interior { PorcelainInterior }
}
// spout and taps at its end
union {
  cylinder { <-1.0, 0.68, 1.0>, <-1.0, 0.68, 0.86>, 0.022 }
  sphere { <-1.0, 0.68, 0.86>, 0.022 }
  cylinder { <-1.0, 0.68, 0.86>, <-1.0, 0.64, 0.85>, 0.020 }
  #for (Side, -1, 1, 2)
    cylinder { <-1.0 + Side * 0.12, 0.82, 1.0>, <-1.0 + Side * 0.12, 0.82, 0.95>, 0.03 }
    cylinder { <-1.05 + Side * 0.12, 0.82, 0.94>, <-0.95 + Side * 0.12, 0.82, 0.94>, 0.009 }
    cylinder { <-1.0 + Side * 0.12, 0.77, 0.94>, <-1.0 + Side * 0.12, 0.87, 0.94>, 0.009 }
  #end
  texture { ChromeTexture }
}

// ---- toilet against the back wall
#declare Toilet = union {
  // foot and bowl
  lathe { cubic_spline 8 <0.0, -0.02>, <0.145, 0.0>, <0.135, 0.05>, <0.115, 0.16>, <0.165, 0.30>, <0.195, 0.385>, <0.190, 0.40>, <0.15, 0.405>
    scale <1, 1, 1.28> }
  // seat and lid, lid closed
  cylinder { <0, 0.40, 0>, <0, 0.420, 0>, 0.200 scale <1, 1, 1.28> }
  cylinder { <0, 0.424, 0>, <0, 0.440, 0>, 0.196 scale <1, 1, 1.28> }
  torus { 0.194, 0.008 scale <1, 1, 1.28> translate y * 0.432 }
  // base back to the wall and tank
  object { Round_Box_Union(<-0.11, 0.0, 0.05>, <0.11, 0.38, 0.40>, 0.03) }
  object { Round_Box_Union(<-0.22, 0.40, 0.22>, <0.22, 0.76, 0.42>, 0.03) }
  object { Round_Box_Union(<-0.235, 0.765, 0.205>, <0.235, 0.80, 0.43>, 0.015) }
  texture { PorcelainTexture } interior { PorcelainInterior }
}
object { Toilet translate <0.42, 0, 0.56> }
union {   // flush lever
  cylinder { <0.25, 0.70, 0.79>, <0.25, 0.70, 0.76>, 0.014 }
  object { Round_Box_Union(<0.24, 0.69, 0.75>, <0.33, 0.71, 0.765>, 0.004) }
  texture { ChromeTexture }
}
// paper roll on the right wall
union {
  cylinder { <0, 0, -0.055>, <0, 0, 0.055>, 0.055 pigment { rgb <0.8, 0.8, 0.78> } normal { bumps 0.1 scale 0.01 } }
  box { <-0.055, -0.14, -0.055>, <-0.0545, 0, 0.055> pigment { rgb <0.8, 0.8, 0.78> } }
  cylinder { <0, 0, -0.07>, <0, 0, 0.07>, 0.012 texture { ChromeTexture } }
  box { <0.05, -0.01, 0.06>, <0.10, 0.01, 0.075> texture { ChromeTexture } }
  translate <1.14, 0.66, 0.15>
}
// bath mat hung over the tub
object { Round_Box_Union(<-0.635, 0.22, -0.05>, <-0.605, 0.535, 0.45>, 0.012) pigment { rgb <0.12, 0.28, 0.36> } normal { granite 0.8 scale 0.02 } }
object { Round_Box_Union(<-0.74, 0.515, -0.05>, <-0.605, 0.542, 0.45>, 0.012) pigment { rgb <0.12, 0.28, 0.36> } normal { granite 0.8 scale 0.02 } }
