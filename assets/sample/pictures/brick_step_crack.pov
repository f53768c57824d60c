// Brick wall: a crack climbs through the mortar in steps towards the corner
// of a window and opens the higher it gets.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"
#include "plants.inc"

#declare Chance = seed(104);

CloudySky()
SoftSun(<-40, 50, -50>, rgb <1.3, 1.22, 1.08>)
light_source { <20, 20, -40> rgb <0.41, 0.44, 0.53> shadowless }

Snapshot(<-0.5, 1.05, -2.35>, <0.0, 0.88, 0>, 56, 3)

#declare BrickLength = 0.215;
#declare BrickHeight = 0.065;
#declare Joint = 0.011;
#declare Course = BrickHeight + Joint;
#declare Courses = 34;

#declare WindowLeft = 0.62;
#declare WindowSill = 1.33;

#declare CrackTop = floor(WindowSill / Course);

// Horizontal place of the crack in each course, counted down from the corner
// of the window: mostly half a brick per course, now and then it runs on along
// a bed joint or turns back.
#declare Pitch = BrickLength + Joint;
#declare CrackPlace = array[Courses + 1];
#declare Place = WindowLeft - 0.09 - mod(WindowLeft - 0.09 - 0.0565 - mod(CrackTop, 2) * Pitch / 2, Pitch);
#for (Row, Courses, 0, -1)
  #declare CrackPlace[Row] = Place - Joint / 2 + 0.006;
  #if (Row <= CrackTop)
    #declare Turn = rand(Chance);
    #declare Place = Place - Pitch * (Turn < 0.80 ? 0.5 : (Turn < 0.92 ? -0.5 : 1.5));
  #end
#end
#macro CrackAt(Row) (CrackPlace[Row]) #end
#macro Opening(Row) (0.004 + 0.017 * Row / 18) #end

// mortar bed
difference {
  box { <-4, -0.3, 0.008>, <4, 4, 0.2> }
  box { <WindowLeft, WindowSill - 0.02, -1>, <3, 5, 1> }
  texture { MortarTexture }
}

#for (Row, 0, Courses)
  #local Offset = mod(Row, 2) * (BrickLength + Joint) / 2;
  #for (Brick, -12, 12)
    #local Left = Brick * (BrickLength + Joint) + Offset + 0.0565;
    #local Base = Row * Course;
    #local InWindow = (Left + 0.03 > WindowLeft & Base > WindowSill - 0.02);
    #if (!InWindow)
      // everything left of the crack has moved away from it
      #local Shift = 0;
      #local Right = Left + BrickLength;
      #if (Base > WindowSill - 0.02) #local Right = min(Right, WindowLeft); #end
      #if (Left + BrickLength / 2 < CrackAt(Row) & Row <= CrackTop) #local Shift = -Opening(Row) * 0.9; #end
      box { <Left + Shift, Base + Jitter(Chance, 0.0015), Jitter(Chance, 0.002) + (Shift != 0) * -0.004>,
            <Right + Shift, Base + BrickHeight + Jitter(Chance, 0.0015), 0.1>
        BrickTexture(<0.36, 0.13, 0.085> * (0.75 + rand(Chance) * 0.6) + <0.03, 0.02, 0.015> * rand(Chance), <Row, Brick, rand(Chance)> * 3) }
    #end
  #end
#end

// the open joints: upright part beside each brick, flat part up to the next
#for (Row, 0, CrackTop)
  #local At = CrackAt(Row);
  #local Wide = Opening(Row);
  union {
    box { <At - Wide, Row * Course - Joint, -0.0005>, <At + 0.001, Row * Course + BrickHeight + Joint, 0.02> }
    // bed joint over this course, as far as the next upright
    #if (Row < CrackTop)
      #local Next = CrackAt(Row + 1);
      box { <min(At, Next) - Wide, BrickHeight - 0.002, -0.0005>, <max(At, Next) + 0.001, BrickHeight + Joint * (0.75 + 0.4 * rand(Chance)), 0.02>
        translate y * Row * Course }
    #end
    pigment { rgb <0.012, 0.010, 0.009> } finish { ambient 0 diffuse 0.6 }
  }
#end

// window with stone sill
box { <WindowLeft - 0.07, WindowSill - 0.09, -0.07>, <3, WindowSill - 0.01, 0.15> texture { ConcreteTexture(<0.55, 0.53, 0.48>) } }
difference {
  box { <WindowLeft, WindowSill - 0.01, 0.03>, <3, 4, 0.12> }
  box { <WindowLeft + 0.07, WindowSill + 0.07, -1>, <3, 4, 1> }
  PaintTexture(<0.8, 0.8, 0.78>, 0.3)
}
box { <WindowLeft, WindowSill, 0.07>, <3, 4, 0.075>
  pigment { rgb <0.03, 0.04, 0.05> } finish { specular 0.8 roughness 0.005 reflection 0.35 diffuse 0.3 } }

// ground
object { Lawn(<-3, 0, -2.0>, <3, 0, 0.0>, 0.3, 0.07, Chance) translate -y * 0.02 }
object { Shrub(<0.35, 0.3, 0.25>, <0.10, 0.19, 0.05>, Chance) translate <1.25, 0.2, -0.35> }
// something for the window to reflect
object { Tree(8, <0.13, 0.20, 0.05>, Chance) translate <8, 0, -12> }
